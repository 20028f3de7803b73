#include "setup/WrappingButton.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace vantorin {

void WrappingButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QString caption = option.text;
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
    const int margin = style()->pixelMetric(QStyle::PM_ButtonMargin, &option, this);
    painter.drawItemText(rect().adjusted(margin, 0, -margin, 0),
                         Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic, palette(),
                         isEnabled(), caption, QPalette::ButtonText);
}

}  // namespace vantorin

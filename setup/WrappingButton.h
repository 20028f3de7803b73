// A push button whose caption wraps onto more lines when it does not fit,
// as the wizard's tall "Download Website Now!" button needs.
#pragma once

#include <QPushButton>

namespace vantorin {

class WrappingButton : public QPushButton {
public:
    WrappingButton(const QString& caption, QWidget* parent) : QPushButton(caption, parent) {}

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace vantorin

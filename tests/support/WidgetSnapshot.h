// A window as text: every named widget below it, one line each, indented by
// depth, with its class, name, text, geometry, whether it is shown and
// enabled, its font, and what a user meets first (the focus, a modal or
// fixed-size window, a default button and those Enter would press once
// focused, a label's alignment, wrapping and picture, a filled background, a
// tooltip).
// Tests compare it with a file kept beside them; with VANTORIN_UPDATE_SNAPSHOTS
// set they write the file instead (tests/update_snapshots.sh), and the change
// is reviewed like code.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QWidget>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>

namespace vantorin::testing {

inline std::string ShownText(const QWidget& w) {
    // A list's rows, or a drop-down list's items, joined.
    const auto rows = [](const QAbstractItemModel& model) {
        QStringList texts;
        for (int i = 0; i < model.rowCount(); ++i) texts << model.index(i, 0).data().toString();
        return texts.join(',');
    };
    QString text;
    if (auto* label = qobject_cast<const QLabel*>(&w)) text = label->text();
    if (auto* button = qobject_cast<const QAbstractButton*>(&w)) text = button->text();
    if (auto* box = qobject_cast<const QLineEdit*>(&w)) text = box->text();
    if (auto* group = qobject_cast<const QGroupBox*>(&w)) text = group->title();
    if (auto* menu = qobject_cast<const QMenu*>(&w)) text = menu->title();
    if (auto* combo = qobject_cast<const QComboBox*>(&w))
        text = combo->currentText() + " [" + rows(*combo->model()) + "]";
    if (auto* list = qobject_cast<const QListView*>(&w); list && list->model())
        text = "[" + rows(*list->model()) + "]";
    if (w.isWindow()) text = w.windowTitle();
    return text.toStdString();
}

inline void Describe(const QWidget& w, int depth, std::ostringstream& out) {
    // Qt's own parts (a list's scroll bars, say) are left out.
    if (!w.objectName().isEmpty() && !w.objectName().startsWith("qt_")) {
        const QRect g = w.geometry();
        out << std::string(static_cast<std::size_t>(depth) * 2, ' ') << w.metaObject()->className()
            << ' ' << w.objectName().toStdString() << " \"" << ShownText(w) << "\" " << g.x() << ','
            << g.y() << ' ' << g.width() << 'x' << g.height()
            << (w.isVisible() ? " shown" : " hidden") << (w.isEnabled() ? "" : " disabled") << ' '
            << w.font().pointSizeF() << (w.font().bold() ? "pt bold" : "pt")
            << (w.window()->focusWidget() == &w ? " focus" : "")
            << (w.isWindow() && w.windowModality() != Qt::NonModal ? " modal" : "")
            << (w.isWindow() && w.minimumSize() == w.maximumSize() ? " fixed" : "");
        if (auto* label = qobject_cast<const QLabel*>(&w)) {
            out << " aligned " << std::hex << label->alignment().toInt() << std::dec
                << (label->wordWrap() ? " wrapped" : "");
            if (const QPixmap picture = label->pixmap(); !picture.isNull())
                out << " picture " << picture.width() << 'x' << picture.height();
        }
        if (w.autoFillBackground()) out << " filled " << w.backgroundRole();
        if (auto* button = qobject_cast<const QPushButton*>(&w))
            out << (button->isDefault() ? " default" : button->autoDefault() ? " autodefault" : "");
        if (!w.toolTip().isEmpty()) out << " tip \"" << w.toolTip().toStdString() << '"';
        out << '\n';
        ++depth;
    }
    for (const QObject* child : w.children())
        if (auto* widget = qobject_cast<const QWidget*>(child); widget && !widget->isWindow())
            Describe(*widget, depth, out);
    // A window's actions: the menu items, with their text and whether they work.
    if (w.isWindow())
        for (const QAction* action : w.findChildren<QAction*>())
            if (!action->objectName().isEmpty() && !action->isSeparator())
                out << "  action " << action->objectName().toStdString() << " \""
                    << action->text().toStdString() << "\" "
                    << action->shortcut().toString().toStdString()
                    << (action->isEnabled() ? "" : " disabled") << '\n';
}

// Compares the window with `file` (a path below the test sources), or writes
// it; `mask` takes out what differs from machine to machine.
inline void ExpectSnapshot(const QWidget& window, const std::string& file,
                           const std::function<std::string(std::string)>& mask = {}) {
    const std::string path = std::string(VANTORIN_TEST_SOURCES) + "/" + file;
    std::ostringstream out;
    Describe(window, 0, out);
    const std::string now = mask ? mask(out.str()) : out.str();
    if (qEnvironmentVariableIsSet("VANTORIN_UPDATE_SNAPSHOTS")) {
        std::ofstream(path, std::ios::binary) << now;
        return;
    }
    std::ifstream in(path, std::ios::binary);
    ASSERT_TRUE(in) << path << " is missing: run tests/update_snapshots.sh";
    EXPECT_EQ(now, std::string(std::istreambuf_iterator<char>(in), {})) << path;
}

}  // namespace vantorin::testing

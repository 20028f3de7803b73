#!/bin/sh
# Fails when a widget header is included anywhere in the core folders.
root="$1"
if grep -rnE '#include *[<"](QtWidgets|QWidget|QMainWindow|QDialog|QMessageBox|QListWidget|QLabel|QPushButton|QComboBox|QLineEdit|QApplication|QInputDialog|QDesktopServices)' \
    "$root/platform"/*.h "$root/platform"/*.cpp "$root/output" "$root/extractor" "$root/engine"; then
    echo "widget headers found in a core folder" >&2
    exit 1
fi
echo "no widget headers in the core folders"

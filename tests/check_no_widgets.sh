#!/bin/sh
# Fails when a core folder includes a widget header, or when the crawl's
# folders include the dialogs or the shell seam: the core asks and shows
# nothing. A folder that cannot be read fails too.
root="$1"
status=0
check() {  # check WHAT PATTERN PLACE...
    what=$1 pattern=$2
    shift 2
    grep -rnE "$pattern" "$@"
    case $? in
        0) echo "$what" >&2; status=1 ;;
        1) ;;
        *) echo "cannot read: $*" >&2; status=1 ;;
    esac
}
check "widget headers found in a core folder" \
    '#include *[<"](QtWidgets|QWidget|QMainWindow|QDialog|QMessageBox|QListWidget|QLabel|QPushButton|QComboBox|QLineEdit|QApplication|QInputDialog|QDesktopServices)' \
    "$root/text" "$root/platform"/*.h "$root/platform"/*.cpp "$root/output" "$root/extractor" "$root/engine"
check "the crawl's folders include the dialogs or the shell" \
    '#include *"platform/(Dialogs|ShellOpen)\.h"' "$root/output" "$root/extractor" "$root/engine"
[ $status = 0 ] && echo "no widget, dialog or shell in the core folders"
exit $status

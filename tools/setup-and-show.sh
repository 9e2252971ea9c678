#!/bin/bash
# Fresh Debian 12 to a message dialog on the screen: installs what is missing,
# builds the `formwerk` command and shows a dialog, then prints its answer.
# Without a display the dialog runs on a virtual one, is saved as a picture
# and answered with Esc, so the script ends by itself.
set -euo pipefail
# shellcheck source=setup-common.sh
source "$(dirname "${BASH_SOURCE[0]}")/setup-common.sh"

install_missing
configure
say "Building the formwerk command"
cmake --build "$build" --target formwerk-cli -j"$(build_jobs)"

cli=$build/bin/formwerk
dialog=(frm_DialogMessage --flags 3 --title "Speichern: Dokument geändert"
    --text "Die Änderungen an \"Bericht.txt\" sind noch nicht gespeichert. Jetzt speichern?"
    --icon 'Ico\32\Computer\Signs\Question.ico')

code=0
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    say "Showing the dialog: answer it on your screen"
    "$cli" "${dialog[@]}" || code=$?
else
    picture=$build/message-dialog.png
    say "No display: the dialog runs on a virtual X display (xvfb-run)"
    "$cli" "${dialog[@]}" --screenshot "$picture"
    echo "Picture of the dialog: $picture"
    echo "Answering it with Esc, as FORMWERK_SCRIPT_KEYS=Escape asks:"
    FORMWERK_SCRIPT_KEYS=Escape xvfb-run -a "$cli" "${dialog[@]}" || code=$?
fi
echo "Exit code: $code (the dialog's result code)"

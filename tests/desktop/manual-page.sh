#!/usr/bin/env bash
# The manual page renders without a warning and names every option `quillo --help` lists, so an
# option added to the program and not to the page fails here; and the help is translated.
set -euo pipefail
quillo="$1" page="$2"

warnings=$(LC_ALL=C.UTF-8 groff -man -ww -z -Tutf8 "$page" 2>&1)
if [[ -n "$warnings" ]]; then
    echo "groff warns about $page:"; echo "$warnings"; exit 1
fi
rendered=$(groff -man -Tascii -P-cbou -rLL=200n "$page" 2>/dev/null)
missing=0
for option in $(QT_QPA_PLATFORM=offscreen "$quillo" --help | grep -oE '^ +(-[a-z], )?--[a-z-]+' | grep -oE -- '--[a-z-]+'); do
    if ! grep -qF -- "$option" <<<"$rendered"; then
        echo "the manual page does not name $option"; missing=1
    fi
done
# The help speaks the user's language, as the window does.
if ! LANGUAGE=de LANG=de_DE.UTF-8 QT_QPA_PLATFORM=offscreen "$quillo" --help | grep -q "Desktop-Fernsteuerung"; then
    echo "quillo --help is not in German under a German locale"; missing=1
fi
exit $missing

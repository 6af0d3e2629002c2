#!/usr/bin/env bash
# Every translatable text of the sources has its translation: lupdate run over a copy of each .ts
# finds nothing new and nothing unfinished.
set -euo pipefail
lupdate="$1" sources="$2"; shift 2
work="$(mktemp -d)"
trap 'rm -rf -- "$work"' EXIT
status=0
for ts in "$@"; do
    copy="$work/$(basename "$ts")"
    cp "$ts" "$copy"
    "$lupdate" -silent -locations none -no-obsolete "$sources" -ts "$copy"
    if grep -q 'type="unfinished"' "$copy"; then
        echo "$(basename "$ts") lacks translations of:"
        grep -B3 'type="unfinished"' "$copy" | grep -o '<source>.*</source>' | sed 's#</\?source>##g'
        status=1
    fi
done
exit $status

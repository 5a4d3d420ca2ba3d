#!/usr/bin/env bash
# A session played through the linked driver and through koru.dll gives the same pictures, and records
# that differ in addresses and time stamps alone.
# Usage: both_forms.sh KORU SOURCE_FOLDER
set -eu
koru=$1
source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$koru" play "$source/samples/session.json" --out "$work/linked" >/dev/null
"$koru" play "$source/samples/session.json" --out "$work/image" --image "$source/build/image/koru.dll" >/dev/null
for picture in real-screen.png virtual-screen.png; do
  cmp "$work/linked/$picture" "$work/image/$picture"
done
for form in linked image; do
  "$koru" records "$work/$form/records.koru" --json --no-addresses >"$work/$form.jsonl"
done
[ -s "$work/linked.jsonl" ]
cmp "$work/linked.jsonl" "$work/image.jsonl"
echo "both forms agree on $(wc -l <"$work/linked.jsonl") records"

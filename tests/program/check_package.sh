#!/usr/bin/env bash
# The checker of packages finds every fault; the package made of what is built has none, and is made the same twice.
# Usage: check_package.sh KORU SOURCE_FOLDER
set -eu
source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$source/scripts/check-package" --self-test
for turn in first second; do
  mkdir -p "$work/$turn"
  ln -s "$source/build/image" "$work/$turn/image"
  "$source/scripts/package" "$work/$turn"
done
"$source/scripts/check-package" "$work"/first/koru-*.zip
cmp "$work"/first/koru-*.zip "$work"/second/koru-*.zip

#!/usr/bin/env bash
# Bad input gives one line on stderr, a non-zero exit, and no results.
# Usage: bad_input.sh KORU SOURCE_FOLDER
set -u
koru=$1
samples=$2/samples
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

refuses() { # NAME EXPECTED-TEXT ARGUMENT...
  local name=$1 text=$2
  shift 2
  rm -rf "$work/out"
  "$koru" "$@" >"$work/stdout" 2>"$work/stderr"
  local status=$?
  local lines
  lines=$(wc -l <"$work/stderr")
  if [ $status -eq 0 ] || [ $status -ge 126 ] || [ "$lines" -ne 1 ] || ! grep -qF -- "$text" "$work/stderr"; then
    echo "FAILED $name: exit $status, $lines lines on stderr:"
    cat "$work/stderr"
    failures=$((failures + 1))
  fi
  if [ -n "$(find "$work/out" -type f 2>/dev/null)" ]; then
    echo "FAILED $name: left files behind"
    failures=$((failures + 1))
  fi
}

head -c 2000 "$samples/visitors.emf" >"$work/cut.emf"
echo 'not a picture' >"$work/text.png"
echo '{"steps": [' >"$work/broken.json"
echo '{"steps": [{"dance": 1}]}' >"$work/unknown.json"
echo '{"steps": [{"zoomer": {"original": [9, 9, 3, 3], "zoomed": [0, 0, 9, 9]}}]}' >"$work/reversed.json"
echo '{"steps": [{"zoomer": {"original": [0, 0, 9, 9], "zoomed": [0, 0, 9, 9], "factor": 0}}]}' >"$work/factor.json"
echo '{"steps": [{"zoomer": {"original": [0, 0, 9999, 9], "zoomed": [0, 0, 9, 9]}}]}' >"$work/outside.json"
echo 'MZ' >"$work/short.dll"
head -c 4096 /dev/zero >"$work/zero.dll"
touch "$work/file"

play="play --out $work/out"
refuses missing_file 'nowhere.emf' $play "$work/nowhere.emf"
refuses missing_session 'nowhere.json' $play "$work/nowhere.json"
refuses cut_metafile 'cut.emf' $play "$work/cut.emf"
refuses no_picture 'text.png' $play "$work/text.png"
refuses broken_json 'no JSON' $play "$work/broken.json"
refuses unknown_step 'dance' $play "$work/unknown.json"
refuses reversed_rectangle 'left must be below right' $play "$work/reversed.json"
refuses factor_of_zero 'factor' $play "$work/factor.json"
refuses factor_option_of_zero 'factor' $play --zoomer 'original=0,0,9,9 zoomed=0,0,90,90 factor=0' "$samples/visitors.emf"
refuses outside_of_screen 'must lie on the screen' $play "$work/outside.json"
refuses odd_depth 'bits per pixel' $play --depth 7 "$samples/visitors.emf"
refuses unwritable_folder 'cannot be written' play --out "$work/file/inside" "$samples/visitors.emf"
refuses missing_image 'nowhere.dll' $play --image "$work/nowhere.dll" "$samples/visitors.emf"
refuses short_image 'short.dll' $play --image "$work/short.dll" "$samples/visitors.emf"
refuses no_pe 'zero.dll' $play --image "$work/zero.dll" "$samples/visitors.emf"
refuses nothing_to_play 'nothing to play' $play
refuses unknown_option 'bogus' play --bogus "$samples/visitors.emf"
refuses no_records 'nowhere.koru' records "$work/nowhere.koru"
refuses not_records 'file' records "$work/file"

[ $failures -eq 0 ] && echo "bad input: all refused as they should be"
exit $((failures != 0))

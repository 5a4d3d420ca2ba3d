#!/usr/bin/env bash
# Bad input gives one line on stderr, a non-zero exit, and no results; what these lines promise works.
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
echo '{"steps": [{"play": {"file": "x.png", "wher": [0, 0, 9, 9]}}]}' >"$work/misspelt.json"
image='{"file": "x.png"}' placed='{"file": "x.png", "where": [0, 0, 9, 9]}' area='"area": [0, 0, 9, 9]'
echo "{\"steps\": [{\"overlay\": {\"image\": $placed, $area}}]}" >"$work/image_where.json"
echo "{\"steps\": [{\"overlay\": {\"image\": $image, \"mask\": $placed, $area}}]}" >"$work/mask_where.json"
echo '{"steps": []}' >"$work/empty.json"
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
refuses unknown_command '"bogus" is unknown' bogus
refuses misspelt_key 'steps[0].play: does not know "wher"' $play "$work/misspelt.json"
refuses place_in_an_image 'overlay.image: does not know "where"' $play "$work/image_where.json"
refuses place_in_a_mask 'overlay.mask: does not know "where"' $play "$work/mask_where.json"
for option in --size=640x480 --depth=32 --mask=1 '--zoomer=original=0,0,9,9 zoomed=0,0,9,9' --dark-zone=0,0,9,9; do
  refuses "${option%%=*}_beside_a_session" "a session file says this itself: ${option%%=*}" \
    $play "$option" "$work/empty.json"
done
refuses unknown_side 'border: must be one of left, top' $play --zoomer 'original=0,0,9,9 zoomed=0,0,9,9 border=left,up' "$samples/visitors.emf"
refuses comma_at_the_end 'original: must be' $play --zoomer 'original=0,0,9,9, zoomed=0,0,9,9' "$samples/visitors.emf"

magnify="magnify $work/dot.png $work/out/dot.png"
printf 'BM\x3a\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\4\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xff\0\0\0' \
  >"$work/dot.png" # one blue pixel
mkdir -p "$work/out"
for pair in 0x1234,000000 000000,0x1234 12345,6000000 ' 12345,000000' -12345,000000 0000000000000; do
  refuses "pair_$pair" '--pair: must be' $magnify "--pair=$pair"
done
refuses magnify_factor 'koru: --factor: must be' $magnify --factor 0
refuses magnify_smuggled_key 'koru: --factor: must be' $magnify --factor '3 smooth=2'
refuses magnify_smooth 'koru: --smooth: must be' $magnify --smooth 4
refuses magnify_style 'koru: --style: must be' $magnify --style bold
refuses magnify_border 'koru: --border: must be' $magnify --border left,up
refuses magnify_border_size 'koru: --border-size: must be' $magnify --border-size 1001
refuses magnify_border_colour 'koru: --border-colour: must be' $magnify --border-colour red
refuses no_records 'nowhere.koru' records "$work/nowhere.koru"
refuses not_records 'file' records "$work/file"

accepts() { # NAME ARGUMENT...
  local name=$1
  shift
  if ! "$koru" "$@" >"$work/stdout" 2>"$work/stderr"; then
    echo "FAILED $name: refused:"
    cat "$work/stderr"
    failures=$((failures + 1))
  fi
}

same() { # FILE FILE
  cmp -s "$work/$1" "$work/$2" || {
    echo "FAILED: $1 and $2 are not the same"
    failures=$((failures + 1))
  }
}

# What the refusals promise. A frame of two sides is not one of one side, nor one of all.
for border in all left left,top '["left","top"]' '["left"]'; do
  accepts "border $border" magnify "$work/dot.png" "$work/$border.png" --border "$border" --border-colour white
  accepts "zoomer with border $border" play --quiet --size 64x48 --out "$work/play $border" \
    --zoomer "original=0,0,9,9 zoomed=20,20,38,38 border=$border" "$work/dot.png"
done
same '["left"].png' left.png
same '["left","top"].png' left,top.png
same 'play ["left"]/real-screen.png' 'play left/real-screen.png'
same 'play ["left","top"]/real-screen.png' 'play left,top/real-screen.png'
for one in left left,top; do
  for other in left,top all; do
    [ $one = $other ] || ! cmp -s "$work/$one.png" "$work/$other.png" || {
      echo "FAILED: a frame of $one is one of $other"
      failures=$((failures + 1))
    }
  done
done
accepts pair magnify "$work/dot.png" "$work/pair.png" --pair aBcDeF,012345

[ $failures -eq 0 ] && echo "bad input: all refused as they should be"
exit $((failures != 0))

#!/usr/bin/env bash
# koructl.exe and koruspy.exe import nothing that Windows 2000 lacks, and say that they run on it.
# Usage: windows_imports.sh KORU SOURCE_FOLDER
set -eu
export LC_ALL=C # one order for sort and comm
source=$2
allowed=$source/tests/program/windows_2000_functions.txt
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail() {
  echo "FAILED $*"
  failures=$((failures + 1))
}

for program in koructl koruspy; do
  file=$source/build/image/$program.exe
  i686-w64-mingw32-objdump -p "$file" >"$work/headers"
  # One line per import, "LIBRARY FUNCTION", the library in small letters.
  awk '/DLL Name:/ { library = tolower($3) }
       /^\t[0-9a-f]+\t +[0-9]+  / { print library, $3 }' "$work/headers" | sort -u >"$work/imports"
  [ "$(wc -l <"$work/imports")" -gt 50 ] || fail "$program: its imports were not understood"
  comm -23 "$work/imports" <(grep -v '^#' "$allowed" | sort -u) >"$work/unknown"
  [ ! -s "$work/unknown" ] || fail "$program imports what Windows 2000 may lack: $(tr '\n' ';' <"$work/unknown")"
  for field in MajorOSystemVersion MajorSubsystemVersion; do
    [ "$(awk -v field=$field '$1 == field { print $2 }' "$work/headers")" = 5 ] || fail "$program: $field is not 5"
  done
  for field in MinorOSystemVersion MinorSubsystemVersion; do
    [ "$(awk -v field=$field '$1 == field { print $2 }' "$work/headers")" = 0 ] || fail "$program: $field is not 0"
  done
  grep -q 'Windows CUI' "$work/headers" || fail "$program is no console program"
done

# The check can fail: without a function that is used, the list lets it through no longer.
grep -v ' ExtEscape$' "$allowed" | sort -u | comm -23 "$work/imports" - | grep -q ' ExtEscape$' || fail "the check sees nothing"

[ $failures -eq 0 ] && echo "the programs import what Windows 2000 has"
exit $((failures != 0))

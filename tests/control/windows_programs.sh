#!/usr/bin/env bash
# The programs start on a Windows, help, and refuse with one line what cannot be done there: there is no Koru.
# Usage: windows_programs.sh WINE IMAGE_FOLDER
set -u
wine=$1
images=$2

# A Windows without a screen may start programs without end. All that runs here is one process tree, of a user
# that may have few processes, and it ends with the test. (Limits of processes do not bind root.)
if [ -z "${KORU_CONTAINED:-}" ]; then
  export KORU_CONTAINED=1
  limits=(timeout -k 5 200)
  if [ "$(id -u)" -eq 0 ]; then
    limits+=(unshare --pid --fork --kill-child --mount-proc setpriv --reuid=54321 --regid=54321 --clear-groups)
  fi
  exec "${limits[@]}" prlimit --nproc=150 bash "$0" "$@"
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work WINEDEBUG=-all WINEPREFIX=$work/prefix
unset DISPLAY
failures=0

run() { # PROGRAM ARGUMENT...
  local program=$1
  shift
  timeout -k 5 40 "$wine" "$images/$program" "$@" </dev/null >"$work/stdout" 2>"$work/stderr"
}

expect() { # EXIT-CODE EXPECTED-TEXT STREAM PROGRAM ARGUMENT...
  local code=$1 text=$2 stream=$3
  shift 3
  run "$@"
  local status=$?
  if [ $status -ne "$code" ] || ! grep -qF -- "$text" "$work/$stream"; then
    echo "FAILED $*: exit $status"
    head -5 "$work/stdout" "$work/stderr"
    failures=$((failures + 1))
  fi
}

run koructl.exe --help # sets the prefix up
expect 0 'koructl zoomer create' stdout koructl.exe --help
expect 0 '--darker-wins' stdout koructl.exe zoomer create --help
expect 1 'koructl: Koru does not drive this screen' stderr koructl.exe status
expect 1 'koructl: Koru does not drive this screen' stderr koructl.exe zoomer remove 0x12
expect 2 '"dance" is unknown' stderr koructl.exe dance
expect 1 '"DrvDance"' stderr koructl.exe capture mask DrvDance
expect 1 'koructl: the registry does not tell' stderr koructl.exe install --video 7
expect 1 'koructl: ' stderr koructl.exe uninstall
expect 0 'until Ctrl+C' stdout koruspy.exe --help
expect 1 'koruspy: Koru does not drive this screen' stderr koruspy.exe --out "$work/records.koru"
expect 1 'cannot be found' stderr koruspy.exe --install-module nowhere.sys
expect 1 'koruspy: ' stderr koruspy.exe --remove-module
expect 2 'not expected: --dance' stderr koruspy.exe --dance
[ ! -e "$work/records.koru" ] || { echo "FAILED koruspy left a file behind"; failures=$((failures + 1)); }

[ $failures -eq 0 ] && echo "the Windows programs start, help and refuse as they should"
exit $((failures != 0))

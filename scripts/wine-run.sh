#!/usr/bin/env bash
# Runs a 32-bit Windows program: scripts/wine-run.sh PROGRAM ARGS...
# Standard streams, arguments, current folder and exit code are the program's own; file names of this machine work as
# they are, relative ones too. `scripts/wine-run.sh --stop` ends what Wine keeps in the background.
set -euo pipefail
source "${BASH_SOURCE[0]%/*}/common.sh"

[[ $# -gt 0 ]] || die "usage: scripts/wine-run.sh PROGRAM ARGS..."
root=$(realpath -m "${MORVANE_WINE_ROOT:-$repo/build/wine-root}")
wine=$root/usr/lib/wine/wine
server=$root/usr/lib/wine/wineserver
[[ -x $wine ]] || die "no Wine in $root: run scripts/wine-root.sh first"

mkdir -p "$root/home" "$root/run"
unset DISPLAY LD_PRELOAD
# The C library is the machine's own: it has to fit the loader /lib/ld-linux.so.2.
export LD_LIBRARY_PATH=/lib32:$root/lib/i386-linux-gnu:$root/usr/lib/i386-linux-gnu
export HOME=$root/home WINEPREFIX=$root/prefix WINEARCH=win32 WINEDEBUG=-all LC_ALL=C.UTF-8
export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
export FONTCONFIG_FILE=$root/fonts.conf
export TMPDIR=$root/run # the server's socket; Windows programs have a temporary folder of their own

if [[ $1 == --stop ]]; then
    "$server" -k || true # nothing to stop
    "$server" -w
    exit
fi

# detached COMMAND ARGS...: with no stream or open file of the caller, who may be waiting for one of them to be closed.
detached() (
    for fd in /proc/"$BASHPID"/fd/*; do
        fd=${fd##*/}
        if ((fd > 2)); then exec {fd}>&-; fi
    done
    exec "$@" </dev/null >/dev/null 2>&1
)

# The server stays for a minute, so that the next program starts in 20 ms rather than in half a second. It is started
# here, with a first program that brings up the services, for otherwise they would all hold on to the streams of PROGRAM.
exec {lock}>"$root/run/lock"
flock "$lock"
if [[ -d $WINEPREFIX ]] && detached "$server" -p60; then
    detached "$wine" cmd /c exit || true
fi
exec {lock}>&-

exec "$wine" "$@"

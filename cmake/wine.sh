#!/usr/bin/env bash
# Runs a Windows program under Wine: cmake/wine.sh PREFIX PROGRAM [ARGS].
# Wine keeps its files in the folder PREFIX (absolute), which the first call makes.
set -eu
export WINEPREFIX=$1 WINEDEBUG=-all
# Asks for no add-ons, does not touch the desktop's menus, opens no window.
export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
unset DISPLAY
shift
wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
mkdir -p "$WINEPREFIX"
# Wine's services outlive the program; started here, they hold none of its pipes open.
"$wine" wineboot </dev/null >/dev/null 2>&1 || :
exec "$wine" "$@"

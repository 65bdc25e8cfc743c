#!/bin/sh
# Runs an example client on a bus of its own, where its first call starts the
# server by activation from the service file under XDG_DATA_HOME; checks the fit
# of the sample's 40 stars and a star back on the sky within 0.1" (the inverse
# solution meets its place to far better than that).
set -eu
out=$(dbus-run-session -- "$@" 2>&1) || { echo "$out"; exit 1; }
echo "$out"
echo "$out" | grep -q "fit of 40 stars"
echo "$out" | grep -q "RMS error of the fit"
echo "$out" | grep -Eq "back to the sky: RA [+-]0\.0[0-9]+\", Dec [+-]0\.0[0-9]+\""

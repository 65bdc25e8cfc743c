#!/usr/bin/env bash
# Installs the D-Bus service file of the Aztrue automation server for the
# current user, so that a client's first call to com.brightfold.AZTSERVR on
# the session bus starts the server: the bus runs "EXECUTABLE --automation".
#
#   scripts/install-dbus-service.sh [EXECUTABLE]    (default: build/aztrue)
#
# The file goes to ${XDG_DATA_HOME:-$HOME/.local/share}/dbus-1/services/.
# Running it again after the build has moved rewrites the file.
set -euo pipefail
cd "$(dirname "$0")/.."

name=com.brightfold.AZTSERVR
executable=${1:-build/aztrue}
if [ ! -x "$executable" ]; then
  echo "install-dbus-service: no executable at $executable; build first (scripts/build.sh build)" >&2
  exit 1
fi
executable=$(realpath "$executable")
# The bus splits Exec like a shell and reads the file as a desktop entry,
# where a backslash is an escape: a path with blanks is put in double
# quotes, and one with quotes or backslashes cannot be written at all.
case "$executable" in
  *[\"\'\\\$\`]*)
    echo "install-dbus-service: cannot name $executable in a service file (quotes, backslash or \$ in the path)" >&2
    exit 1 ;;
  *[[:space:]]*) exec_path="\"$executable\"" ;;
  *) exec_path=$executable ;;
esac

services=${XDG_DATA_HOME:-$HOME/.local/share}/dbus-1/services
mkdir -p "$services"
file=$services/$name.service
cat > "$file.tmp" <<SERVICE
[D-BUS Service]
Name=$name
Exec=$exec_path --automation
SERVICE
mv "$file.tmp" "$file"
echo "Installed $file"

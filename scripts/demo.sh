#!/usr/bin/env bash
# Builds the applet and its board in software and acquires pictures of both cameras into a folder.
#
#     scripts/demo.sh [FOLDER]        the folder is demo-pictures unless told
set -euo pipefail

here=$PWD
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/packages.sh
. scripts/lib/build.sh

folder=${1:-$PWD/demo-pictures}
case $folder in /*) ;; *) folder=$here/$folder ;; esac

needPackages "${demoPackages[@]}"
buildPreset i386 orbctl Orbelline
exec build/i386/console/orbctl demo --out "$folder"

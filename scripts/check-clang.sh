#!/usr/bin/env bash
# Builds everything with Clang, warnings being errors as with GCC, and runs the tests of that build.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/packages.sh

needPackages "${testPackages[@]}" clang
exec scripts/test.sh i386-clang

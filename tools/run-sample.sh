#!/usr/bin/env bash
# Sets up a Debian machine, builds lfimport, creates a new practice database and shows what
# it holds. (The TPS sync of the bundled sample export joins this job when it is built.)
set -euo pipefail
cd "$(dirname "$0")/.."
tools/setup-debian.sh
tools/build.sh build
mkdir -p build/sample
practice=build/sample/practice.db
rm -f "$practice" "$practice-wal" "$practice-shm"
build/lfimport init "$practice"
build/lfimport info "$practice"

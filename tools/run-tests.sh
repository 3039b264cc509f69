#!/usr/bin/env bash
# Sets up a Debian machine, builds, and runs the test suite.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/setup-debian.sh
tools/build.sh build
ctest --test-dir build --output-on-failure -j"$(nproc)"

#!/usr/bin/env bash
# Installs the build and test dependencies from Debian's packages.
set -euo pipefail
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends \
  g++ cmake ninja-build pkg-config sqlite3 libsqlite3-dev libcli11-dev nlohmann-json3-dev libfmt-dev \
  libpcre2-dev mdbtools-dev libgtest-dev libgmock-dev libbenchmark-dev python3 >/dev/null

#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs the Debian packages the build needs that are missing. As root it runs apt-get;
# otherwise it prints the command to run and fails.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config ccache
  qt6-base-dev qt6-base-dev-tools qt6-charts-dev libgl-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  nlohmann-json3-dev libcli11-dev libxlsxwriter-dev zlib1g-dev
  libsqlite3-dev sqlite3 libpq-dev libssl-dev postgresql
  xvfb unzip help2man
)

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Missing packages: ${missing[*]}"
if [ "$(id -u)" -ne 0 ]; then
  echo "Run: sudo apt-get install -y ${missing[*]}"
  exit 1
fi
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq "${missing[@]}"

#!/usr/bin/env bash
# Installs every package the build and the tests use (Debian 12). Safe to run again: when all
# of them are present it returns at once without touching apt.
#   scripts/install-deps.sh             what make build, make test and make run need
#   scripts/install-deps.sh --package   also what make package and CI add: the manual pages'
#                                       generator, lintian, a second compiler with libFuzzer
#                                       (make clang, make fuzz), clang-format (make format-check)
#                                       and zsh to test its completion
set -euo pipefail

packages=(
  build-essential cmake ninja-build
  nlohmann-json3-dev libcli11-dev
  libcurl4-openssl-dev libsqlite3-dev
  libcpp-httplib-dev pkg-config python3
  libgtest-dev libbenchmark-dev
  qt6-base-dev libqt6gui6 fonts-dejavu-core
)
if [ "${1:-}" = "--package" ]; then
  packages+=(help2man lintian clang clang-format libclang-rt-14-dev zsh)
fi

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q '^install ok installed$' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"

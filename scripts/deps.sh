#!/usr/bin/env bash
# Installs the Debian packages that building and testing need, when any is missing.
# Idempotent and silent when everything is present.
set -euo pipefail

# libssl-dev is never linked into the library: the crypto tests and benchmark use OpenSSL as
# their oracle and peer.
packages=(cmake ninja-build g++ clang pkg-config libicu-dev zlib1g-dev libcurl4-openssl-dev
          libgtest-dev libgmock-dev libbenchmark-dev libssl-dev)

missing=()
for p in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$p")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing missing packages: ${missing[*]}"
sudo=""
if [[ $(id -u) -ne 0 ]]; then
  command -v sudo >/dev/null || { echo "need root or sudo to install: ${missing[*]}" >&2; exit 1; }
  sudo=sudo
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null

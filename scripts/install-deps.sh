#!/usr/bin/env bash
# Installs everything Quillon needs to build, test and run, from Debian's packages.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config
  libicu-dev
  nlohmann-json3-dev
  libquantlib0-dev
  googletest libgtest-dev libgmock-dev libbenchmark-dev
  locales
  # The Qt view, the demo and their tests. The offscreen platform plugin comes with
  # libqt6gui6; the DejaVu fonts (with the condensed face the view prefers) serve offscreen
  # screenshots, and poppler-utils' pdftotext lets the tests read a printed confirmation back.
  qt6-base-dev libqt6gui6 fonts-dejavu-core fonts-dejavu-extra poppler-utils
  # The fuzz targets: clang with libFuzzer and its sanitizer runtimes.
  clang-14 libclang-rt-14-dev
)

sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ "${#missing[@]}" -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
else
  echo "All build dependencies are installed."
fi

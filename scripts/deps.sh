#!/usr/bin/env bash
# Installs the Debian packages the build needs, only those that are missing.
set -euo pipefail
# Further packages a script needs for itself come as arguments (the fuzzing
# script's clang).
need=(cmake g++ make libgtest-dev libbenchmark-dev nlohmann-json3-dev libcli11-dev libtbb-dev parallel
      qt6-base-dev qt6-svg-dev qt6-image-formats-plugins poppler-utils fonts-liberation2 xvfb
      dpkg-dev file)
need+=("$@")
missing=()
for pkg in "${need[@]}"; do
    dpkg -s "$pkg" >/dev/null 2>&1 || missing+=("$pkg")
done
if ((${#missing[@]})); then
    echo "Installing: ${missing[*]}"
    sudo_cmd=""
    [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
    $sudo_cmd apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${missing[@]}"
fi

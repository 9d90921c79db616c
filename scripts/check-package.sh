#!/usr/bin/env bash
# Unpacks the Debian package of TOBEL-3 into a temporary root (dpkg-deb -x,
# nothing is installed) and checks what it holds: the files, `tobel --help`,
# and, when the desktop program offers it, a screenshot of an example.
# With --install (root or sudo), the package is then installed for real with
# apt-get, which brings its dependencies; the installed tobel-gui takes a
# screenshot under Xvfb, and the package is removed again.
# Usage: scripts/check-package.sh [--install] [PACKAGE.deb] (default: the newest in build/package).
set -euo pipefail
root_dir=$(cd "$(dirname "$0")/.." && pwd)
install=0
if [ "${1:-}" = "--install" ]; then
    install=1
    shift
fi
deb=${1:-$(ls -t "$root_dir"/build/package/*.deb 2>/dev/null | head -1 || true)}
if [ -z "$deb" ] || [ ! -f "$deb" ]; then
    echo "check-package: no package; run scripts/package.sh first" >&2
    exit 1
fi
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
dpkg-deb -x "$deb" "$root"
echo "Unpacked $deb into $root"

fail=0
for f in usr/bin/tobel usr/bin/tobel-gui usr/share/applications/tobel-gui.desktop \
    usr/share/icons/hicolor/scalable/apps/tobel-gui.svg usr/share/tobel/manual.html \
    usr/share/tobel/examples/slope2d-homogeneous.tob; do
    if [ -e "$root/$f" ]; then
        echo "ok: /$f"
    else
        echo "missing: /$f" >&2
        fail=1
    fi
done
echo "Depends: $(dpkg-deb -f "$deb" Depends)"

# The command-line program runs from the unpacked root.
if "$root/usr/bin/tobel" --help >"$root/help.txt" 2>&1; then
    echo "ok: tobel --help"
    head -3 "$root/help.txt"
else
    echo "tobel --help failed:" >&2
    cat "$root/help.txt" >&2
    fail=1
fi

# The desktop program: a screenshot of an example, once it has the option.
export QT_QPA_PLATFORM=offscreen
if timeout 30 "$root/usr/bin/tobel-gui" --help >"$root/gui-help.txt" 2>&1 &&
    grep -q -- "--screenshot" "$root/gui-help.txt"; then
    shot="$root/shot.png"
    if timeout 120 "$root/usr/bin/tobel-gui" --screenshot "$shot" \
        "$root/usr/share/tobel/examples/slope2d-homogeneous.tob" && [ -s "$shot" ]; then
        echo "ok: tobel-gui --screenshot ($(stat -c %s "$shot") bytes)"
    else
        echo "tobel-gui --screenshot failed" >&2
        fail=1
    fi
else
    echo "skipped: tobel-gui has no --screenshot option yet"
fi

if [ "$install" = 1 ] && [ "$fail" = 0 ]; then
    sudo=""
    [ "$(id -u)" = 0 ] || sudo=sudo
    $sudo apt-get install -y -qq "$(cd "$(dirname "$deb")" && pwd)/$(basename "$deb")" >/dev/null
    command -v xvfb-run >/dev/null || $sudo apt-get install -y -qq xvfb >/dev/null
    shot="$root/installed-shot.png"
    if (unset QT_QPA_PLATFORM; timeout 120 xvfb-run -a /usr/bin/tobel-gui --screenshot "$shot" \
        --view isometry /usr/share/tobel/examples/slope3d-layers-piezo-force.tob) && [ -s "$shot" ]; then
        echo "ok: installed; /usr/bin/tobel-gui --screenshot under Xvfb ($(stat -c %s "$shot") bytes)"
    else
        echo "the installed tobel-gui --screenshot failed" >&2
        fail=1
    fi
    $sudo apt-get remove -y -qq tobel >/dev/null
    echo "removed the package again"
fi
exit $fail

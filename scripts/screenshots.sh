#!/usr/bin/env bash
# Pictures of each tab of the setup dialog's measurement route, at the dialog's own size, for the
# README. Runs the real dialog under a virtual X server: `scripts/screenshots.sh [BUILD] [DESIGN]`.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
design=${2:-examples/ddr4_x8_write.json}
out=docs/screenshots
command -v xvfb-run >/dev/null || { echo "screenshots need xvfb-run (Debian package xvfb)" >&2; exit 2; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$design" "$work/design.json"
# Every tab unlocked, as after walking the wizard to its end.
"$build/bin/lanetap" set "$work/design.json" --probe X1 TabWidgetTabNumber=4

mkdir -p "$out"
names=(setup-probe select-signals select-measurements select-reference-signal select-compliance)
for tab in 0 1 2 3 4; do
    xvfb-run -a -s "-screen 0 1280x1024x24" \
        "$build/bin/lanetap" setup "$work/design.json" --probe X1 --tab "$tab" \
        --screenshot "$out/$tab-${names[$tab]}.png"
done
ls "$out"

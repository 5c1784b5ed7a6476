#!/usr/bin/env bash
# soak.sh BUILD SOURCE SEED FRAMES: runs the editor of a build folder, with all its modules and
# without a display, on a copy of the sample project while a random user works in it, and checks
# that it ends well and holds no more memory than the work explains. Prints the figures.
set -euo pipefail
build="$(realpath "$1")" source="$(realpath "$2")" seed="$3" frames="$4"

folder="$(mktemp -d)"
trap 'rm -rf "$folder"' EXIT
mkdir -p "$folder"/{home,modules,programs,logs}
cp "$build"/modules/*.{so,conf} "$build"/fixtures/SoakProbe/SoakProbe.{so,conf} "$folder/modules"
cp "$source/share/projects/sample.json" "$folder/project.json"

# What is opened is noted, and nothing of the desktop is reached
cat >"$folder/programs/xdg-open" <<'PROGRAM'
#!/bin/sh
echo "$@" >>"$(dirname "$0")/opened"
PROGRAM
chmod +x "$folder/programs/xdg-open"
for program in zenity kdialog notify-send; do
    ln -s /bin/false "$folder/programs/$program"
done
unset DISPLAY WAYLAND_DISPLAY XDG_RUNTIME_DIR DBUS_SESSION_BUS_ADDRESS
export PATH="$folder/programs:$PATH" HOME="$folder/home" TMPDIR="$folder"
export XDG_CONFIG_HOME="$folder/home/config" XDG_DATA_HOME="$folder/home/data"
export XDG_CACHE_HOME="$folder/home/cache" XDG_STATE_HOME="$folder/home/state"
export QUILLMERE_SOAK_REPORT="$folder/report"

"$build/quillmere-random-input" "$seed" "$frames" 1280 720 >"$folder/input"
status=0
"$build/quillmere-editor" --headless --size 1280x720 --frames "$frames" --modules "$folder/modules" \
    --log-dir "$folder/logs" --serve 0 --feed "$source/share/logs/build.log" --input "$folder/input" \
    "$folder/project.json" >"$folder/out" 2>"$folder/err" || status=$?
if [ "$status" -ne 0 ]; then
    tail -n 200 "$folder/err"
    echo "soak: seed $seed: the editor ended with status $status"
    exit 1
fi
# A panel that threw is closed and the editor goes on, which isn't well either
if grep -h "] Module .* was closed: \|] Module .* can.t be loaded: " "$folder/out" "$folder/err"; then
    echo "soak: seed $seed: a panel failed"
    exit 1
fi

# Growth between a quarter of the frames and the end. The history owns its entries and their paths,
# and the values in the document's pool; lines lie in the store and, joined, in the console panel.
# What is left over is what the editor would go on taking.
awk -v seed="$seed" -v frames="$frames" -v most="${QUILLMERE_SOAK_MOST:-2000000}" '
    $1 >= frames / 4 && !begin { begin = NR; split($0, first) }
    { split($0, last) }
    END {
        if(!begin || begin == NR) { print "soak: no figures"; exit 1 }
        for(i = 1; i <= 7; ++i) grown[i] = last[i] - first[i]
        explained = grown[3] + grown[4] * 300 + grown[5] * 2 + grown[6] * 600
        left = grown[2] - explained
        printf "soak: seed %d, %d frames: %d edits, %d entries left, %d lines; from frame %d to %d memory grew from " \
            "%d to %d bytes, %d of them in the pool, %d entries and %d lines more, %d unexplained\n",
            seed, frames, last[7], last[4], last[6], first[1], last[1], first[2], last[2], grown[3], grown[4],
            grown[6], left
        if(left > most) { print "soak: expected at most " most " bytes unexplained"; exit 1 }
        if(last[7] < frames / 500) { print "soak: the random user has edited next to nothing"; exit 1 }
    }' "$folder/report"

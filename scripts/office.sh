#!/usr/bin/env bash
# Makes an office of plotter files, the same each time: scripts/office.sh PLATEN FOLDER
# 200 configurations in ten rooms, 40 PMPs (five of them beside FOLDER, in FOLDER-server), 60 tables.
# They name their PMPs and printers in the ways that are found in old folders, see below.
set -euo pipefail

platen=$1
mkdir -p "$2" "$2-server"
office=$(cd "$2" && pwd)
server=$(cd "$2-server" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

quietly() { "$platen" "$@" >/dev/null; }

# --- Tables --------------------------------------------------------------------------------------

presets=(iso-0.13 iso-0.18 iso-0.25 iso-0.35 iso-0.5 black grayscale screening)
mkdir -p "$office/styles"
for number in {0..59}; do
    name=$office/styles/$(printf 'table %02d' "$number")
    if ((number % 3 == 2)); then
        quietly create stb -o "$name.stb" --description "Pens $number"
    else
        quietly create ctb -o "$name.ctb" --preset "${presets[number % 8]}" --description "Pens $number"
    fi
done

# --- PMPs ----------------------------------------------------------------------------------------

quietly create pc3 --device "Print As PDF" -o "$work/plain.pc3"
quietly create pmp --from "$work/plain.pc3" -o "$work/plain.pmp"
parameters=()
for number in {0..39}; do
    room=$(printf '%02d' $((number % 10)))
    case $((number / 5)) in
        0) place=$server ;;
        [1-3]) place=$office/room\ $room ;;
        *) place=$office/room\ $room/PMP ;;
    esac
    mkdir -p "$place"
    parameters[number]=$place/$(printf 'papers %02d.pmp' "$number")
    cp "$work/plain.pmp" "${parameters[number]}"
    quietly paper add "${parameters[number]}" --name "Roll $number" \
        --size "$((600 + number))x2000" --units mm
done

# --- Configurations ------------------------------------------------------------------------------

quietly set "$work/plain.pc3" meta/canonical_model_name= meta/win_device_name:str= \
    meta/win_driver_name:str="Plotter Driver" --in-place
quietly set "$work/plain.pc3" custom/90:block custom/90/name:str=dmDriverExtra \
    custom/90/value:num=8 custom/91:block custom/91/name:str=RawPrivateDeviceData \
    custom/91/value:bin=0123456789ABCDEF -o "$work/private.pc3"
for number in {0..199}; do
    room=$(printf '%02d' $((number % 10)))
    mkdir -p "$office/room $room"
    # Rooms are also those of the PMPs: 10, 20 and 30 lie on.
    pmp=${parameters[number % 40]}
    printer="Plotter $((number % 6 + 1))"
    friendly=$printer
    form=plain
    case $((number % 7)) in
        1) name=$(basename "$pmp") ;;               # beside the configuration
        2) name="D:\\Plotters\\$(basename "$pmp")" ;; # of a machine that is gone
        3) name= ;;                                 # no PMP
        *) name=$pmp ;;
    esac
    # The server's are found by their full path only.
    if ((number % 40 < 5)); then
        name=$pmp
    fi
    case $((number % 11)) in
        1) printer=${printer^^} ;;
        2) friendly="The one by the door" ;;
        3) form=private ;;
        4) printer="New plotter 1" friendly=$printer ;; # there already
        5) printer="Office" friendly= ;;                # stays
        6) printer= friendly= ;;
    esac
    if ((number % 50 == 49)); then
        name=gone.pmp
    fi
    quietly set "$work/$form.pc3" meta/user_defined_model_pathname="$name" \
        meta/win_device_name="$printer" meta/friendly_net_name="$friendly" \
        media/number_of_copies=$((number % 3 + 1)) \
        -o "$office/room $room/$(printf 'plot %03d.pc3' "$number")"
done

# --- What else lies about ------------------------------------------------------------------------

printf 'Ask Ann.\n' >"$office/read me.txt"
head -c 1000 "$office/styles/table 00.ctb" >"$office/styles/cut off.ctb"

#!/usr/bin/env bash
# What disks do to files that are written: disks_test.sh PLATEN
# Disks of this test's own that are full, used up by one person, read-only or broken. Each time the
# command must say so, and leave the old file and nothing else. Ends with 77 when this machine does
# not let us make some of these disks, after trying the others; the last line has the figures.
set -euo pipefail

platen=$(realpath "$1")
work=$(mktemp -d)
cd "$work"
tried=()
missing=()
device=

finish() {
    umount disk 2>/dev/null || true
    [[ -z $device ]] || losetup -d "$device" 2>/dev/null || true
    umount memory 2>/dev/null || true
    cd /
    rm -rf "$work"
}
trap finish EXIT

fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

# Changes files of the disk, which must fail, say why, and leave all as it is.
# refused WHAT WORDS
refused() {
    local what=$1 words=$2 status before after said
    local -a writings=("set disk/table.ctb description=new --in-place"
        "paper remove disk/plan.pc3 --name Roll" "create ctb -o disk/new.ctb")
    # A file that is there, one of a pair, and a new one.
    for writing in "${writings[@]}"; do
        before=$(cd disk && find . -type f ! -name "$ignored" -exec cksum {} + | sort)
        status=0
        # shellcheck disable=SC2086
        said=$(${as[@]+"${as[@]}"} "$platen" $writing 2>&1) || status=$?
        ((status == 2)) || fail "$what: platen $writing ended with status $status: $said"
        [[ $said =~ $words ]] || fail "$what: platen $writing says: $said"
        after=$(cd disk && find . -type f ! -name "$ignored" -exec cksum {} + | sort)
        [[ $before == "$after" ]] || fail "$what: platen $writing left: $after"
    done
    tried+=("$what")
}

# Puts the files onto the disk.
furnish() {
    "$platen" create ctb -o disk/table.ctb
    "$platen" create pc3 --device "Print As PDF" -o disk/plan.pc3
    "$platen" paper add disk/plan.pc3 --name Roll --size 900x2000 --units mm >said || fail "no paper: $(cat said)"
    chmod -R a+rwX disk
}

# Fills the disk to its last byte.
fill() { cat /dev/zero >disk/filler 2>said || true; }

as=()
ignored=filler

# What needs no disk: a device that is always full, and a limit of the shell's.
mkdir disk
furnish
status=0
"$platen" get disk/table.ctb >/dev/full 2>said || status=$?
((status == 2)) || fail "output to a full device ended with status $status: $(cat said)"
status=0
"$platen" convert disk/table.ctb --to json -o /dev/full 2>said || status=$?
((status == 2)) && grep -q "No space left" said || fail "a full device: status $status: $(cat said)"
tried+=("full device")
as=(bash -c 'ulimit -f 0; exec "$@"' -)
refused "largest size of a file" "File too large"
as=()
rm -rf disk
mkdir disk

# A small disk in memory.
if mount -t tmpfs -o size=128k none disk 2>/dev/null; then
    furnish
    fill
    refused "full disk in memory" "No space left"
    rm disk/filler
    mount -o remount,ro disk
    refused "read-only disk" "Read-only"
    umount disk
else
    missing+=("disks in memory")
fi

# A small disk in a file, with a file system that has quotas.
truncate -s 4M image
if mkfs.ext4 -q -O quota -E quotatype=usrquota image 2>/dev/null && device=$(losetup -f --show image 2>/dev/null) &&
    mount "$device" disk 2>/dev/null; then
    rmdir disk/lost+found
    furnish
    fill
    refused "full disk" "No space left"
    rm disk/filler
    chown -R 65534 disk
    # Blocks of a kilobyte, as many as nobody has now.
    if python3 - "$device" <<'END' 2>said; then
import ctypes, struct, sys
libc = ctypes.CDLL(None, use_errno=True)
def quota(command, block):
    if libc.quotactl(ctypes.c_int(command << 8), sys.argv[1].encode(), 65534, block) != 0:
        raise OSError(ctypes.get_errno(), "quotactl")
form = "8QI4x"
block = ctypes.create_string_buffer(struct.calcsize(form))
quota(0x800007, block)
used = struct.unpack(form, block.raw)[2]
limit = (used + 1023) // 1024
block.raw = struct.pack(form, limit, limit, 0, 0, 0, 0, 0, 0, 1)
quota(0x800008, block)
END
        as=(setpriv --reuid 65534 --clear-groups)
        refused "quota" "quota exceeded"
        as=()
    else
        missing+=("quotas ($(tail -n 1 said))")
    fi
    umount disk
else
    missing+=("disks in files")
fi

# It is in a file that cannot grow: what is written to new places is lost when it is to last.
[[ -z $device ]] || losetup -d "$device"
device=
mkdir memory
if mount -t tmpfs -o size=1M none memory 2>/dev/null && truncate -s 4M memory/image &&
    mkfs.ext4 -q -F memory/image 2>/dev/null && device=$(losetup -f --show memory/image 2>/dev/null) &&
    mount "$device" disk 2>/dev/null; then
    rmdir disk/lost+found
    furnish
    sync
    cat /dev/zero >memory/filler 2>said || true
    # It takes no change of names either.
    ignored='.platen-*'
    refused "disk that fails when it is flushed" "flush: |Read-only"
    umount disk
else
    missing+=("disks that fail when they are flushed")
fi

list() {
    local IFS=,
    printf '%s' "$*"
}
printf 'disks: %d kinds of fault, each for 3 ways to write: %s\n' "${#tried[@]}" "$(list "${tried[@]}")"
((${#missing[@]} == 0)) || {
    printf 'not tried here: %s\n' "$(list "${missing[@]}")"
    exit 77
}

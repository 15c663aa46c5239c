#!/usr/bin/env bash
# What disks do to files that are written: disks_test.sh PLATEN KIND
# KIND is device (one that is always full), limit (the shell's for the size of files), memory (a full
# disk, then a read-only one), full (a file system in a file), flush (one that fails when what was
# written is to last) or quota. Each time the command must say what is wrong, and leave the old files
# and nothing else. Ends with 77 when this machine does not let us make such a disk.
set -euo pipefail

platen=$(realpath "$1")
kind=$2
work=$(mktemp -d)
cd "$work"
mkdir disk memory
device=
as=()
# What is on a disk besides the documents.
ignored='filler*'

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

impossible() {
    printf 'not tried: %s\n' "$*"
    exit 77
}

# Prints sums of all documents.
sums() { (cd disk && find . -type f ! -name "$ignored" -exec cksum {} + | sort); }

# Changes files of the disk, which must fail, say why, and leave all as it is.
# refused WORDS
refused() {
    local words=$1 status before writing said
    local -a writings=("set disk/table.ctb description=new --in-place"
        "paper remove disk/plan.pc3 --name Roll" "create ctb -o disk/new.ctb")
    # A file that is there, one of a pair, and a new one.
    for writing in "${writings[@]}"; do
        before=$(sums)
        status=0
        # shellcheck disable=SC2086
        said=$(${as[@]+"${as[@]}"} "$platen" $writing 2>&1) || status=$?
        ((status == 2)) || fail "platen $writing ended with status $status: $said"
        [[ $said =~ $words ]] || fail "platen $writing says: $said"
        [[ $before == "$(sums)" ]] || fail "platen $writing left: $(sums)"
    done
    printf '%s: 3 ways to write, each refused with a reason\n' "$kind"
}

# Puts the files onto the disk.
furnish() {
    "$platen" create ctb -o disk/table.ctb
    "$platen" create pc3 --device "Print As PDF" -o disk/plan.pc3
    "$platen" paper add disk/plan.pc3 --name Roll --size 900x2000 --units mm >said || fail "$(cat said)"
}

# Takes all the room that is left in a folder: the last of it only small files get.
fill() {
    local number=0
    cat /dev/zero >"$1/filler" 2>said || true
    while head -c 4096 /dev/zero 2>said >"$1/filler$number"; do number=$((number + 1)); done
}

# Mounts a small file system that is in a file of FOLDER.
# mount_file FOLDER [OPTION...]
mount_file() {
    local image=$1/image
    shift
    truncate -s 4M "$image"
    # What is left below a page is not given out in blocks that are smaller.
    mkfs.ext4 -q -F -b 4096 -m 0 "$@" "$image" 2>said || impossible "$(cat said)"
    device=$(losetup -f --show "$image" 2>said) || impossible "$(cat said)"
    mount -o nodelalloc "$device" disk 2>said || impossible "$(cat said)"
}

case $kind in
    device)
        furnish
        status=0
        "$platen" get disk/table.ctb >/dev/full 2>said || status=$?
        ((status == 2)) || fail "output ended with status $status: $(cat said)"
        status=0
        "$platen" convert disk/table.ctb --to json -o /dev/full 2>said || status=$?
        ((status == 2)) && grep -q "No space left" said || fail "-o ended with $status: $(cat said)"
        printf 'device: 2 ways to write, each refused with a reason\n'
        ;;
    limit)
        furnish
        as=(bash -c 'ulimit -f 0; exec "$@"' -)
        refused "File too large"
        ;;
    memory)
        mount -t tmpfs -o size=128k none disk 2>said || impossible "$(cat said)"
        furnish
        fill disk
        refused "No space left"
        rm disk/filler*
        mount -o remount,ro disk
        refused "Read-only"
        ;;
    full)
        mount_file .
        furnish
        fill disk
        refused "No space left"
        ;;
    flush)
        # The file that it is in cannot grow.
        mount -t tmpfs -o size=2M none memory 2>said || impossible "$(cat said)"
        mount_file memory
        furnish
        sync
        fill memory
        # Such a disk soon takes no change of names either.
        ignored='.platen-*'
        refused "flush: |Read-only"
        ;;
    quota)
        mount_file . -O quota -E quotatype=usrquota
        furnish
        chmod a+rwx disk
        chown -R 65534 disk
        # Nobody may have as many kilobytes as he has now.
        python3 - "$device" 2>said <<'END' || impossible "$(tail -n 1 said)"
import ctypes, os, struct, sys
libc = ctypes.CDLL(None, use_errno=True)
form = "8QI4x"
block = ctypes.create_string_buffer(struct.calcsize(form))
def quota(command):
    if libc.quotactl(ctypes.c_int(command << 8), sys.argv[1].encode(), 65534, block) != 0:
        sys.exit("quotactl: " + os.strerror(ctypes.get_errno()))
quota(0x800007)
limit = (struct.unpack(form, block.raw)[2] + 1023) // 1024
block.raw = struct.pack(form, limit, limit, 0, 0, 0, 0, 0, 0, 1)
quota(0x800008)
END
        as=(setpriv --reuid 65534 --clear-groups)
        refused "quota"
        ;;
    *) fail "no such kind: $kind" ;;
esac

#!/usr/bin/env python3
"""Whether the library and the independent reader read the same: compare.py PROGRAM CORPORA WORK [--spoil]

PROGRAM is platen_documents, which leaves of each file what the check says and the file written again
from its tree. Every sample is given to it in a container that this reader has packed, or as it is. Both
have to accept the same files; what is written again has to hold the items that stood in the first; and
what the check calls sound has to hold by the strict rules. With --spoil the reader takes lines of one
byte less, and the comparison has to fail.
"""
import json
import os
import shutil
import subprocess
import sys

import reader

FOLDERS = ("body_text", "container", "json_body", "plot_configuration", "plot_model_parameters",
           "plot_style_table", "repair")


def samples(corpora):
    for folder in FOLDERS:
        for name in sorted(os.listdir(os.path.join(corpora, folder))):
            with open(os.path.join(corpora, folder, name), "rb") as file:
                data = file.read()
            is_file = data.startswith(b"PIAFILE") or folder in ("container", "json_body")
            yield f"{folder}/{name}", data if is_file else reader.pack(data)


def items_of(data, verify=False):
    try:
        return reader.read(data, verify)
    except reader.Refused as why:
        return why


def main():
    program, corpora, work = sys.argv[1:4]
    if "--spoil" in sys.argv:
        reader.READ -= 1
    shutil.rmtree(work, ignore_errors=True)
    os.makedirs(os.path.join(work, "out"))
    names, paths = [], []
    for name, data in samples(corpora):
        names.append(name)
        paths.append(os.path.join(work, f"{len(paths)}"))
        with open(paths[-1], "wb") as file:
            file.write(data)
    subprocess.run([program, os.path.join(work, "out"), *paths], check=True, stdout=subprocess.DEVNULL)
    counts = {"read": 0, "refused": 0, "sound": 0}
    faults = []
    for number, (name, path) in enumerate(zip(names, paths)):
        with open(path, "rb") as file:
            data = file.read()
        out = os.path.join(work, "out", str(number + 2))
        with open(out + ".check", encoding="utf-8") as file:
            check = json.load(file)
        codes = {finding["code"] for finding in check["findings"]}
        items = items_of(data)
        refused = isinstance(items, reader.Refused)
        wrote = os.path.exists(out + ".tree")
        counts["refused" if refused else "read"] += 1
        if not check["findings"]:
            counts["sound"] += 1
            strict = items_of(data, True)
            if isinstance(strict, reader.Refused):
                faults.append(f"{name}: sound, but {strict}")
        if refused and wrote:
            faults.append(f"{name}: the library reads it, but {items}")
        elif wrote and "not-read-back" not in codes and "line-cut" not in codes and "character-lost" not in codes:
            with open(out + ".tree", "rb") as file:
                again = items_of(file.read(), True)
            if again != items:
                faults.append(f"{name}: read differently: {str(items)[:300]} / {str(again)[:300]}")
        elif not refused and not wrote and not codes & {"body-too-large", "line-break-in-value"}:
            faults.append(f"{name}: the library refuses it: {sorted(codes)}")
    for fault in faults[:20]:
        print(fault)
    print(f"{counts}, {len(faults)} differences")
    sys.exit(1 if faults or counts["sound"] == 0 else 0)


main()

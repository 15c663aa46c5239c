#!/usr/bin/env python3
"""Takes inputs of a minimised corpus into the one that is kept: fuzz_corpus.py FRESH KEPT

Inputs that people have named stay. Of the others at most 120 are kept and 250 KB, small and large ones
alike, named by the first letters of their digest; those that were kept before and are not in FRESH go.
"""
import hashlib
import os
import re
import sys

MOST_INPUTS = 120
MOST_BYTES = 250_000


def main():
    fresh, kept = sys.argv[1:]
    os.makedirs(kept, exist_ok=True)
    named = {}
    for name in os.listdir(kept):
        path = os.path.join(kept, name)
        if re.fullmatch(r"[0-9a-f]{12}", name):
            os.remove(path)
        else:
            with open(path, "rb") as file:
                named[file.read()] = name
    inputs = []
    for name in os.listdir(fresh):
        with open(os.path.join(fresh, name), "rb") as file:
            inputs.append(file.read())
    fresh_ones = sorted(set(inputs) - set(named), key=lambda each: (len(each), each))
    step = max(1, -(-len(fresh_ones) // MOST_INPUTS))
    taken = size = 0
    for content in fresh_ones[::step]:
        if size + len(content) > MOST_BYTES:
            break
        with open(os.path.join(kept, hashlib.sha256(content).hexdigest()[:12]), "wb") as file:
            file.write(content)
        taken += 1
        size += len(content)
    print(f"{kept}: {len(named)} named inputs and {taken} of {len(inputs)} found ones, {size} bytes")


main()

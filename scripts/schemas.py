#!/usr/bin/env python3
"""Holds what tests have seen of JSON against docs/schema, and the schemas against what was published.

  schemas.py --sources DIR... --seen DIR --since FILE [--windows]
      fails when an output does not follow its schema, when an id in the sources has no schema or a
      schema no id, when no test has seen an id, or when a published schema has changed. What was
      seen before FILE, the program of the tests, was made is of an older one, and does not count.
      Ids that only sources for Windows have need to be seen there alone.
  schemas.py --write [--unreleased]
      lists new schemas in published.txt. --unreleased: nobody has those that are listed already, so
      that they may change, too.
"""

import argparse
import hashlib
import json
import pathlib
import re
import sys

FOLDER = pathlib.Path(__file__).resolve().parent.parent / "docs" / "schema"
PUBLISHED = FOLDER / "published.txt"
ID = re.compile(r'"(platen\.[a-z-]+/[0-9]+)"')
# Words for people, which may become better.
WORDS = {"title", "description", "$comment", "examples"}


def file_of(schema_id):
    return FOLDER / (schema_id.removeprefix("platen.").replace("/", "-") + ".json")


def load(path):
    return json.loads(path.read_text(encoding="utf-8"))


def without_words(schema):
    if isinstance(schema, dict):
        # A property of such a name is a schema, and no text.
        return {
            key: without_words(value)
            for key, value in schema.items()
            if not (key in WORDS and isinstance(value, (str, list)))
        }
    return [without_words(each) for each in schema] if isinstance(schema, list) else schema


def files_in(schema):
    """The other files that a schema refers to."""
    if isinstance(schema, dict):
        reference = schema.get("$ref")
        name = reference.split("#")[0] if isinstance(reference, str) else ""
        return ({name} - {""}).union(*(files_in(each) for each in schema.values()))
    return set().union(*(files_in(each) for each in schema)) if isinstance(schema, list) else set()


def digest_of(path):
    """Of what a schema demands, that of the files that it refers to included."""
    schema = load(path)
    parts = [json.dumps(without_words(schema), sort_keys=True)]
    parts += [digest_of(FOLDER / name) for name in sorted(files_in(schema))]
    return hashlib.sha256("\n".join(parts).encode()).hexdigest()


def schemas():
    """The files by their ids."""
    found = {}
    for path in sorted(FOLDER.glob("*.json")):
        schema_id = load(path)["properties"]["schema"]["const"]
        if file_of(schema_id) != path:
            sys.exit(f"{path}: the schema of {schema_id} is called {file_of(schema_id).name}")
        found[schema_id] = path
    return found


def published():
    if not PUBLISHED.exists():
        return {}
    return dict(line.split() for line in PUBLISHED.read_text(encoding="ascii").splitlines())


def changes(known):
    """What is wrong with schemas that are listed."""
    for schema_id, digest in published().items():
        if schema_id not in known:
            yield f"{schema_id} was published, and its schema is gone"
        elif digest != digest_of(known[schema_id]):
            yield (
                f"{schema_id} was published and is different now: give the output and its schema "
                "the next number (scripts/schemas.sh --write --unreleased if nobody has it yet)"
            )


def write(unreleased):
    known = schemas()
    faults = [] if unreleased else list(changes(known))
    if faults:
        sys.exit("\n".join(faults))
    lines = [f"{schema_id} {digest_of(path)}\n" for schema_id, path in sorted(known.items())]
    PUBLISHED.write_text("".join(lines), encoding="ascii")


def ids_in(sources):
    """The ids that the sources have, and those of them that only files for Windows have."""
    everywhere, windows = set(), set()
    for folder in sources:
        for path in pathlib.Path(folder).rglob("*.cpp"):
            found = set(ID.findall(path.read_text(encoding="utf-8")))
            (windows if path.stem.endswith("_win") else everywhere).update(found)
    return everywhere | windows, windows - everywhere


def outputs(seen, since):
    """Each output once, with the test that saw it."""
    found = {}
    for path in sorted(pathlib.Path(seen).glob("*.jsonl")):
        if path.stat().st_mtime < since:
            path.unlink()
            continue
        for line in path.read_text(encoding="utf-8").splitlines():
            found.setdefault(line, path.stem)
    return found


def validators(jsonschema, known):
    plain = jsonschema.Draft202012Validator
    sound = set()

    def reference(validator, target, instance, schema):
        """Most pieces come again and again: one that was sound is not looked at twice."""
        piece = (validator.resolver.resolution_scope, target, json.dumps(instance))
        if piece not in sound:
            faults = list(plain.VALIDATORS["$ref"](validator, target, instance, schema))
            yield from faults
            if not faults:
                sound.add(piece)

    remembering = jsonschema.validators.extend(plain, {"$ref": reference})
    store = {path.as_uri(): load(path) for path in known.values()}
    result = {}
    for schema_id, path in known.items():
        schema = store[path.as_uri()]
        plain.check_schema(schema)
        resolver = jsonschema.RefResolver(path.as_uri(), schema, store=store)
        result[schema_id] = remembering(schema, resolver=resolver)
    return result


def check(arguments):
    import jsonschema

    known = schemas()
    faults = list(changes(known))
    faults += [
        f"{schema_id} is not listed: scripts/schemas.sh --write"
        for schema_id in known.keys() - published().keys()
    ]
    named, windows = ids_in(arguments.sources)
    faults += [f"{schema_id} has no schema" for schema_id in named - known.keys()]
    faults += [f"no source has {schema_id}" for schema_id in known.keys() - named]
    unseen = set(known) - (set() if arguments.windows else windows)
    ways = validators(jsonschema, known)
    found = outputs(arguments.seen, pathlib.Path(arguments.since).stat().st_mtime)
    for line, test in found.items():
        output = json.loads(line)
        schema_id = output["schema"]
        unseen.discard(schema_id)
        if schema_id not in known:
            faults.append(f"{test}: {schema_id} has no schema")
            continue
        error = jsonschema.exceptions.best_match(ways[schema_id].iter_errors(output))
        if error is not None:
            place = "/".join(str(step) for step in error.absolute_path)
            faults.append(f"{test}: {schema_id} at {place}: {error.message[:300]}")
    faults += [f"no test has seen {schema_id}" for schema_id in sorted(unseen)]
    if faults:
        sys.exit("\n".join(dict.fromkeys(faults)))
    print(f"{len(found)} outputs follow their schemas, of which there are {len(known)}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--write", action="store_true")
    parser.add_argument("--unreleased", action="store_true")
    parser.add_argument("--windows", action="store_true")
    parser.add_argument("--sources", nargs="+")
    parser.add_argument("--seen")
    parser.add_argument("--since")
    arguments = parser.parse_args()
    if arguments.write:
        write(arguments.unreleased)
    elif arguments.sources and arguments.seen and arguments.since:
        check(arguments)
    else:
        parser.error("say --write, or what to check")


main()

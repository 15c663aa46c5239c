"""The software bill of materials of a release, as SPDX 2.3 in JSON.

  sbom.py write FOLDER VERSION MODULES FILE    of the artefacts in FOLDER; MODULES are the page's packages
  sbom.py check FOLDER FILE                    whether it has every DLL of the zips with its digest, every
                                               package of package-lock.json, and names nothing that is not there
Times come from SOURCE_DATE_EPOCH, and the namespace from the artefacts, so that it is the same each time.
"""

import hashlib
import json
import os
import re
import sys
import time
import zipfile
from pathlib import Path

import components

LOCK = Path(__file__).parent.parent / "web/package-lock.json"


def dlls(folder: Path) -> dict[str, str]:
    """Names and digests of the DLLs of others in the zips."""
    found: dict[str, str] = {}
    for archive in sorted(folder.glob("*windows*.zip")):
        with zipfile.ZipFile(archive) as packed:
            for name in packed.namelist():
                file = name.rpartition("/")[2]
                if file.lower().endswith(".dll") and not file.startswith("platen") and file != "MAPI32.DLL":
                    digest = hashlib.sha256(packed.read(name)).hexdigest()
                    if found.setdefault(file, digest) != digest:
                        sys.exit(f"error: two different {file} are shipped")
    return found


def locked() -> dict[str, dict]:
    """Each package that the page is made or tested with, by name and version."""
    found = {}
    for path, entry in json.loads(LOCK.read_text())["packages"].items():
        if path:
            found[f"{path.rpartition('node_modules/')[2]}@{entry['version']}"] = entry
    return found


def listed_licences(folder: Path) -> set[str]:
    """Names of the components that the zips have licences of; npm's are called as it calls them."""
    names = set()
    for archive in sorted(folder.glob("*windows*.zip")):
        with zipfile.ZipFile(archive) as packed:
            index = next(name for name in packed.namelist() if name.endswith("licences/INDEX.txt"))
            text = packed.read(index).decode()
        names |= {c.package if c.npm else c.name for c in components.COMPONENTS if re.search(rf"^{re.escape(c.name)} \S+: ", text, re.M)}
    return names


def package(identifier: str, name: str, version: str, licence: str, purl: str) -> dict:
    return {"SPDXID": identifier, "name": name, "versionInfo": version, "licenseDeclared": licence,
            "licenseConcluded": "NOASSERTION", "copyrightText": "NOASSERTION",
            "downloadLocation": "NOASSERTION", "filesAnalyzed": False,
            "externalRefs": [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                              "referenceLocator": purl}]}


def identified(text: str) -> str:
    return "SPDXRef-" + re.sub(r"[^A-Za-z0-9.-]+", "-", text)


def write(folder: Path, version: str, modules: Path, target: Path) -> None:
    date = time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"])))
    platen = package("SPDXRef-Platen", "Platen", version, "NOASSERTION", f"pkg:generic/platen@{version}")
    platen["licenseComments"] = "The owner of Platen has not chosen a licence yet."
    packages, files = [platen], []
    relationships = [("SPDXRef-DOCUMENT", "DESCRIBES", "SPDXRef-Platen")]
    shipped = listed_licences(folder) | components.CORE
    page = {c.package for c in components.of_page(modules) if c.npm}
    for component in components.COMPONENTS:
        if component.name in shipped and not component.npm:
            number = component.version()
            identifier = identified(component.name)
            packages.append(package(identifier, component.name, number, component.licence,
                                    component.purl(number)))
            relationships.append(("SPDXRef-Platen", "CONTAINS", identifier))
    for name, entry in sorted(locked().items()):
        bare, _, number = name.rpartition("@")
        identifier = identified("npm-" + name)
        packages.append(package(identifier, bare, number, entry.get("license", "NOASSERTION"),
                                f"pkg:npm/{bare.replace('@', '%40')}@{number}"))
        relationships.append(("SPDXRef-Platen", "CONTAINS", identifier) if bare in page
                             else (identifier, "BUILD_TOOL_OF", "SPDXRef-Platen"))
    for name, digest in sorted(dlls(folder).items()):
        identifier = identified("file-" + name)
        files.append({"SPDXID": identifier, "fileName": f"./bin/{name}", "fileTypes": ["BINARY"],
                      "checksums": [{"algorithm": "SHA256", "checksumValue": digest}],
                      "licenseConcluded": "NOASSERTION", "copyrightText": "NOASSERTION"})
        relationships.append((identified(components.of_file(name).name), "CONTAINS", identifier))
    whole = hashlib.sha256(json.dumps([packages, files]).encode()).hexdigest()
    target.write_text(json.dumps({
        "spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT",
        "name": f"platen-{version}", "documentNamespace": f"urn:platen:{version}:{whole}",
        "creationInfo": {"created": date, "creators": ["Tool: scripts/sbom.py"]},
        "packages": packages, "files": files,
        "relationships": [{"spdxElementId": one, "relationshipType": kind, "relatedSpdxElement": other}
                          for one, kind, other in relationships]}, indent=1) + "\n")


def check(folder: Path, file: Path) -> None:
    bill = json.loads(file.read_text())
    wrong = []
    identifiers = ["SPDXRef-DOCUMENT"] + [e["SPDXID"] for e in bill["packages"] + bill["files"]]
    if len(set(identifiers)) != len(identifiers):
        wrong.append("an SPDXID comes twice")
    for relation in bill["relationships"]:
        for end in (relation["spdxElementId"], relation["relatedSpdxElement"]):
            if end not in identifiers:
                wrong.append(f"{end} is not there")
    digests = {e["fileName"].rpartition("/")[2]: e["checksums"][0]["checksumValue"] for e in bill["files"]}
    if digests != dlls(folder):
        wrong.append(f"the DLLs are not those of the zips: {sorted(digests)}")
    names = {f"{e['name']}@{e['versionInfo']}" for e in bill["packages"]}
    wrong += [f"{name} is not there" for name in locked() if name not in names]
    for name in listed_licences(folder):
        if not any(e["name"] == name for e in bill["packages"]):
            wrong.append(f"{name} is not there")
    wrong += [f"{e['name']} has no version or licence" for e in bill["packages"]
              if not e["versionInfo"] or not e["licenseDeclared"]]
    if wrong:
        sys.exit("error: " + "; ".join(wrong))
    print(f"{len(bill['packages'])} packages, {len(digests)} DLLs, all that is shipped")


def main() -> None:
    if len(sys.argv) == 6 and sys.argv[1] == "write":
        write(Path(sys.argv[2]), sys.argv[3], Path(sys.argv[4]), Path(sys.argv[5]))
    elif len(sys.argv) == 4 and sys.argv[1] == "check":
        check(Path(sys.argv[2]), Path(sys.argv[3]))
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main()

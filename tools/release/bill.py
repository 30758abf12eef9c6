"""The bill of materials of a package: SPDX 2.3, in JSON."""
import hashlib
import json
import re

from files import ROOT
from release import linked
from release.archives import MOMENT_TEXT

LICENSE = "MIT"
COPYRIGHT = re.search(r"^Copyright .*$", (ROOT / "LICENSE").read_text(encoding="utf-8"), re.MULTILINE)[0]
HOME = "http://www.orvande.example/"


def identifier(kind, name):
    return f"SPDXRef-{kind}-" + re.sub(r"[^A-Za-z0-9.-]", "-", name)


def digest(algorithm, data):
    return {"algorithm": algorithm, "checksumValue": hashlib.new(algorithm.lower(), data).hexdigest()}


def file_entry(name, data):
    # Names alike but for a sign that an identifier may not have would be the same there.
    number = hashlib.sha256(name.encode()).hexdigest()[:8]
    return {"SPDXID": identifier("File", f"{name}-{number}"), "fileName": f"./{name}",
            "checksums": [digest("SHA1", data), digest("SHA256", data)],
            "licenseConcluded": LICENSE, "licenseInfoInFiles": ["NOASSERTION"], "copyrightText": COPYRIGHT}


def component_entry(component):
    package, version = linked.version_of(component)
    return {"SPDXID": identifier("Package", component.name), "name": component.name, "versionInfo": version,
            "downloadLocation": "NOASSERTION", "filesAnalyzed": False,
            "licenseConcluded": component.license, "licenseDeclared": component.license,
            "copyrightText": component.copyright,
            "externalRefs": [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl",
                              "referenceLocator": f"pkg:deb/debian/{package}@{version}"}]}


def verification_code(files):
    """SPDX's: over the sums of all files."""
    sums = sorted(entry["checksums"][0]["checksumValue"] for entry in files)
    return hashlib.sha1("".join(sums).encode()).hexdigest()


def relation(one, kind, other):
    return {"spdxElementId": one, "relationshipType": kind, "relatedSpdxElement": other}


def bill(archive, version, description, files, components):
    """The text of the bill. `archive`: the package's file; `files`: where those in it are by their names
    there; `components`: what is linked into some of them, by their names."""
    data = archive.read_bytes()
    entries = {name: file_entry(name, file.read_bytes()) for name, file in files.items()}
    others = {component.name: component_entry(component)
              for linked_in in components.values() for component in linked_in}
    for name, linked_in in components.items():
        parts = sorted({component.license for component in linked_in})
        entries[name]["licenseConcluded"] = " AND ".join(
            [LICENSE, *(f"({part})" if " " in part else part for part in parts)])
    own = {"SPDXID": identifier("Package", archive.name), "name": archive.name, "versionInfo": version,
           "packageFileName": archive.name, "summary": description, "supplier": "NOASSERTION",
           "downloadLocation": "NOASSERTION", "homepage": HOME, "filesAnalyzed": True,
           "packageVerificationCode": {"packageVerificationCodeValue": verification_code(entries.values())},
           "checksums": [digest("SHA256", data)], "licenseConcluded": LICENSE, "licenseDeclared": LICENSE,
           "licenseInfoFromFiles": ["NOASSERTION"], "copyrightText": COPYRIGHT}
    relations = [relation("SPDXRef-DOCUMENT", "DESCRIBES", own["SPDXID"])]
    relations += [relation(own["SPDXID"], "CONTAINS", entry["SPDXID"]) for entry in entries.values()]
    relations += [relation(entries[name]["SPDXID"], "STATIC_LINK", others[component.name]["SPDXID"])
                  for name, linked_in in sorted(components.items()) for component in linked_in]
    document = {"spdxVersion": "SPDX-2.3", "dataLicense": "CC0-1.0", "SPDXID": "SPDXRef-DOCUMENT",
                "name": archive.name,
                "documentNamespace": f"{HOME}spdx/{archive.name}-{hashlib.sha256(data).hexdigest()}",
                "creationInfo": {"created": MOMENT_TEXT,
                                 "creators": [f"Tool: orvande-online-package-{version}"]},
                "packages": [own, *(others[name] for name in sorted(others))],
                "files": list(entries.values()), "relationships": relations}
    if any(linked.MINGW in linked_in for linked_in in components.values()):
        document["hasExtractedLicensingInfos"] = [{"licenseId": linked.MINGW_LICENSE,
                                                   "name": "Conditions of the mingw-w64 runtime",
                                                   "extractedText": linked.notice_of(linked.MINGW)}]
    return json.dumps(document, indent=2, ensure_ascii=False) + "\n"

"""Looks at anonymised files with another reader than the one that made them.

usage: checkdeidentified.py PROFILE LIST [options]; LIST has a line for each file: original, a tab, anonymised. With
"options" the attributes that an option may keep or clean are not looked for, but for dates: those are moved.
Prints a line for each value that an attribute of the profile had and that still stands anywhere in the anonymised
file, and for each file that does not read whole.
"""
import re
import sys

import pydicom
from pydicom.datadict import dictionary_has_tag

LEAST = 5
# Numbers, which other attributes may hold rightly.
TERMS = {"AS", "DS", "IS", "US", "SS", "UL", "SL", "FL", "FD", "SQ", "AT", "OB", "OW"}
# What stands in copies for what is gone: an original that said the same says nothing.
DUMMIES = b"20000101000000 anonymous offis_dcmtk"


def profile(path, has_options):
    with open(path, encoding="ascii") as file:
        rows = [line.split("\t") for line in file if re.match(r"[0-9A-Fa-f]{8}\t", line)]
    return {int(row[0], 16) for row in rows if not has_options or row[3:5] == ["-", "-"]}


def is_standard(value):
    return value.startswith(b"1.2.840.10008.") and b"\\" not in value


def collect(dataset, tags, values, terms):
    """Values of the profile's attributes, and what stays in codes and terms."""
    for tag in list(dataset.keys()):
        if tag.group % 2 or not dictionary_has_tag(tag):
            continue
        is_code = tag.group == 8 and 0x0100 <= tag.element <= 0x0122
        raw = dataset.get_item(tag)
        element = dataset[tag]
        if element.VR == "SQ":
            for item in element.value or []:
                collect(item, tags, values, terms)
            continue
        value = raw.value if isinstance(raw.value, bytes) else str(element.value).encode()
        parts = [part.strip(b" \0") for part in value.split(b"\\")]
        if is_code or element.VR in TERMS:
            terms.update(part.lower() for part in parts)
        elif tag in tags:
            values.update(p for p in parts if len(p) >= LEAST and not is_standard(p))


def check(original, anonymised, tags):
    values, terms = set(), set()
    try:
        collect(pydicom.dcmread(original, force=True), tags, values, terms)
    except OSError:
        pass  # an original that this reader cannot take: what the other one made of it is looked at all the same
    with open(anonymised, "rb") as file:
        content = file.read()
    for value in values:
        if value.lower() not in terms and value.lower() not in DUMMIES and value in content:
            yield f"{original}\t{value!r} at {content.find(value)}"
    copy = pydicom.dcmread(anonymised)
    for element in copy.iterall():
        if element.tag.is_private:
            yield f"{original}\tprivate {element.tag}"
    if copy.PatientIdentityRemoved != "YES" or copy.file_meta.MediaStorageSOPInstanceUID != copy.SOPInstanceUID:
        yield f"{original}\tis not marked"


def main():
    has_options = sys.argv[3:] == ["options"]
    tags = profile(sys.argv[1], has_options)
    if has_options:
        TERMS.add("TM")  # times stay, and a birth's may be one of them
    with open(sys.argv[2], encoding="utf-8", errors="surrogateescape") as pairs:
        for line in pairs:
            original, anonymised = line.rstrip("\n").split("\t")
            try:
                for fault in check(original, anonymised, tags):
                    print(fault)
            except Exception as error:  # whatever the reader says
                print(f"{original}\t{type(error).__name__}: {error}")


main()

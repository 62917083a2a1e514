#!/usr/bin/env python3
"""Checks the translations: catalogues.py LUPDATE SOURCE_FOLDER

They have all texts of the sources and no others, each with what is filled in or typed, in the typography of its language.
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

# What a translation must have as often as its source: placeholders, accelerators, line ends, names that are typed.
FIXED_PARTS = re.compile(r"%(?:\d+|L?n)|&(?=\S)|\n|…|`[^`]*`|--[a-z]+|\$[A-Z_]+|~/[^ ,;.]*|RFC.3339")
# In French high punctuation has a no-break space before it, and quotation marks have them inside.
MISPRINTS = {"fr": "[^\u202f][?!;»]|[^\u00a0]:(?!/)|«[^\u202f]|'|\"", "de": "'|\"|[^\u00a0]…", "en": "'"}


def fixed_parts(text):
    return sorted(part.replace("\u00a0", " ") for part in FIXED_PARTS.findall(text))


def is_up_to_date(file, options):
    with tempfile.TemporaryDirectory() as folder:
        copy = shutil.copy(file, folder)
        subprocess.run([sys.argv[1], *options.split(), "src", "-ts", copy], check=True, stderr=subprocess.DEVNULL)
        return open(copy).read() == open(file).read()


os.chdir(sys.argv[2])
faults = []
for language, misprint in MISPRINTS.items():
    file = f"translations/mivora_{language}.ts"
    plurals = "-pluralonly" if language == "en" else ""
    if not is_up_to_date(file, f"-silent -no-obsolete -locations none {plurals}"):
        faults.append(f"{file}: The target update_translations brings it in line with the sources.")
    for message in xml.parse(file).iter("message"):
        source, translation = message.findtext("source"), message.find("translation")
        for text in [form.text or "" for form in translation] or [translation.text or ""]:
            is_finished = text.strip() and not translation.get("type")
            if not is_finished or fixed_parts(text) != fixed_parts(source) or re.search(misprint, text):
                faults.append(f"{file}: {source!r}: {text!r}")
print(*faults, sep="\n")
sys.exit(bool(faults))

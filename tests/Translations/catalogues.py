#!/usr/bin/env python3
"""Checks the translations: catalogues.py LUPDATE SOURCE_FOLDER

They have all texts of the sources and no others, each with what is filled in or typed, in the typography and the words of
its language and platform. The English one has plural forms, and what the sources say in another platform's words.
"""
import glob
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
MISPRINTS = {"fr": "[^\u202f][?!;»]|[^\u00a0]:(?!/)|«[^\u202f]|'|\"", "de": "'|\"|[^\u00a0]…", "en": "\u2019"}
# What people here have under no such name, and an arrow that could stand at a line's end.
FOREIGN = re.compile(r"\bMac\b|[Mm]enu bar|System (?:Settings|Preferences)|Internet Accounts|Privacy & Security|→ |"
                     r"Menüleiste|Systemeinstellungen|Internet-?[Kk]onten|Datenschutz|[Bb]eitr[ei]t|beigetreten|tritt .* bei\b|"
                     r"barre des menus|Réglages|Comptes Internet|Confidentialité")


def fixed_parts(text):
    return sorted(part.replace("\u00a0", " ") for part in FIXED_PARTS.findall(text))


def is_up_to_date(file, options):
    with tempfile.TemporaryDirectory() as folder:
        copy = shutil.copy(file, folder)
        subprocess.run([sys.argv[1], *options.split(), "src", "-ts", copy], check=True, stderr=subprocess.DEVNULL)
        return open(copy).read() == open(file).read()


os.chdir(sys.argv[2])
faults = []
all_texts = set()
for language, misprint in MISPRINTS.items():
    file = f"translations/mivora_{language}.ts"
    known = {(context.findtext("name"), message.findtext("source"), message.get("numerus"))
             for context in xml.parse(file).iter("context") for message in context.iter("message")}
    if language == "en":
        needed = {text for text in all_texts if text[2] or FOREIGN.search(text[1])}
        faults += [f"{file}: {text} is missing, or no text of the sources" for text in needed - known | known - all_texts]
    elif not is_up_to_date(file, "-silent -no-obsolete -locations none"):
        faults.append(f"{file}: The target update_translations brings it in line with the sources.")
    all_texts |= known
    for message in xml.parse(file).iter("message"):
        source, translation = message.findtext("source"), message.find("translation")
        for text in [form.text or "" for form in translation] or [translation.text or ""]:
            is_finished = text.strip() and not translation.get("type")
            if not is_finished or fixed_parts(text) != fixed_parts(source) or re.search(misprint, text) or FOREIGN.search(text):
                faults.append(f"{file}: {source!r}: {text!r}")
faults += [f"{file}: {line}" for file in glob.glob("packaging/app.*") for line in open(file) if FOREIGN.search(line)]
print(*faults, sep="\n")
sys.exit(bool(faults))

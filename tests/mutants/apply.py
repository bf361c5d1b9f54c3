#!/usr/bin/env python3
# Reads the list of deliberate faults and applies one of them to a copy of the tree.
#
#   apply.py LIST --ids             each mutant's ID and what it breaks, one a line
#   apply.py LIST TREE --check      every mutant's text is found exactly once in TREE
#   apply.py LIST TREE ID           applies mutant ID to TREE; prints the files it changed
#
# A list line is "ID | FILE | search | replacement | what it breaks". The search text must occur
# exactly once in the file, so a mutant that no longer fits the code fails loudly instead of
# silently mutating something else. Lines sharing an ID are one mutant (two calls swapped), their
# searches all made in the unchanged file. "\|" stands for a "|" inside a field.
import sys
from collections import OrderedDict

SEPARATOR = " | "
BAR = "\\|"


def read_list(path):
    mutants, whys = OrderedDict(), {}
    with open(path, encoding="utf-8") as listing:
        for number, line in enumerate(listing, 1):
            line = line.rstrip("\n")
            if not line.strip() or line.startswith("#"):
                continue
            fields = [f.replace(BAR, "|") for f in line.split(SEPARATOR)]
            if len(fields) != 5 or not fields[2]:
                sys.exit(f"{path}:{number}: expected 'ID | FILE | search | replacement | why'")
            mutants.setdefault(fields[0], []).append((fields[1], fields[2], fields[3], number))
            whys[fields[0]] = whys.get(fields[0]) or fields[4]
    return mutants, whys


def mutate(tree, mutant_id, edits):
    """Applies every edit of one mutant; returns the changed files or exits with a reason."""
    by_file = OrderedDict()
    for path, search, replacement, number in edits:
        by_file.setdefault(path, []).append((search, replacement, number))
    changed = {}
    for path, file_edits in by_file.items():
        try:
            with open(f"{tree}/{path}", encoding="utf-8") as source:
                text = source.read()
        except OSError as error:
            sys.exit(f"mutant {mutant_id}: {error}")
        spans = []
        for search, replacement, number in file_edits:
            count = text.count(search)
            if count != 1:
                sys.exit(f"mutant {mutant_id} (line {number}): found {count} times in {path}: "
                         f"{search}")
            start = text.index(search)
            spans.append((start, start + len(search), replacement))
        spans.sort()
        for (_, end, _), (start, _, _) in zip(spans, spans[1:]):
            if start < end:
                sys.exit(f"mutant {mutant_id}: overlapping edits in {path}")
        for start, end, replacement in reversed(spans):
            text = text[:start] + replacement + text[end:]
        changed[path] = text
    return changed


def main(args):
    mutants, whys = read_list(args[0]) if args else ({}, {})
    if args[1:] == ["--ids"]:
        print("\n".join(f"{mutant_id} {whys[mutant_id]}" for mutant_id in mutants))
    elif len(args) == 3 and args[2] == "--check":
        for mutant_id, edits in mutants.items():
            mutate(args[1], mutant_id, edits)
        print(f"{len(mutants)} mutants, each found exactly once")
    elif len(args) == 3:
        if args[2] not in mutants:
            sys.exit(f"no mutant {args[2]}")
        for path, text in mutate(args[1], args[2], mutants[args[2]]).items():
            with open(f"{args[1]}/{path}", "w", encoding="utf-8") as target:
                target.write(text)
            print(path)
    else:
        sys.exit("usage: apply.py LIST --ids, LIST TREE --check or LIST TREE ID")


if __name__ == "__main__":
    main(sys.argv[1:])

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
import re
import sys
from pathlib import Path


# Maps each mutant's ID to what it breaks (its first line says) and its edits, in order.
def read_list(path):
    mutants = {}
    with open(path, encoding="utf-8") as listing:
        for number, line in enumerate(listing, 1):
            if not line.strip() or line.startswith("#"):
                continue
            fields = [field.replace("\\|", "|") for field in line.rstrip("\n").split(" | ")]
            if len(fields) != 5 or not fields[2]:
                sys.exit(f"{path}:{number}: expected 'ID | FILE | search | replacement | why'")
            mutants.setdefault(fields[0], (fields[4], []))[1].append((number, *fields[1:4]))
    return mutants


# Returns the new text of each file the mutant changes, or exits with why it does not fit. The
# edits of a file are made in one pass, so two calls can swap places.
def mutate(tree, mutant_id, edits):
    changed = {}
    for path in dict.fromkeys(edit[1] for edit in edits):
        text = Path(tree, path).read_text(encoding="utf-8")
        replacements = {}
        for number, _, search, replacement in (edit for edit in edits if edit[1] == path):
            if text.count(search) != 1:
                sys.exit(f"mutant {mutant_id} (line {number}): found {text.count(search)} times "
                         f"in {path}: {search}")
            replacements[search] = replacement
        pattern = "|".join(map(re.escape, replacements))
        changed[path], made = re.subn(pattern, lambda found: replacements[found[0]], text)
        if made != len(replacements):
            sys.exit(f"mutant {mutant_id}: overlapping edits in {path}")
    return changed


def main(args):
    mutants = read_list(args[0]) if args else {}
    if args[1:] == ["--ids"]:
        print("\n".join(f"{mutant_id} {why}" for mutant_id, (why, _) in mutants.items()))
    elif len(args) == 3 and args[2] == "--check":
        for mutant_id, (_, edits) in mutants.items():
            mutate(args[1], mutant_id, edits)
        print(f"{len(mutants)} mutants, each found exactly once")
    elif len(args) == 3:
        if args[2] not in mutants:
            sys.exit(f"no mutant {args[2]}")
        for path, text in mutate(args[1], args[2], mutants[args[2]][1]).items():
            Path(args[1], path).write_text(text, encoding="utf-8")
            print(path)
    else:
        sys.exit("usage: apply.py LIST --ids, LIST TREE --check or LIST TREE ID")


main(sys.argv[1:])

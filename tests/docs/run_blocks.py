#!/usr/bin/env python3
"""Runs the shell blocks of Markdown pages and compares what they print with what the page shows.

usage: run_blocks.py [--slow] SOURCE_FOLDER PROGRAM_FOLDER SCRATCH_FOLDER PAGE...

A shell block is an indented or fenced one with lines that begin with "$ ": commands, each followed
by its standard output. Blanks count as one; a line "..." stands for any lines; a command without
output has to succeed. The blocks of a page run one after another in one folder, in which
"examples" is that of the sources. <!-- slow --> above a block leaves it to --slow, which runs these
too, and <!-- not run --> leaves it out.
"""
import os
import pathlib
import re
import subprocess
import sys


def blocks_of(lines):
    """Pairs of the mark above a block and its lines, with the number of the first."""
    mark, block, first, fence = "", [], 0, None
    for number, line in enumerate(lines + [""], 1):
        if fence is None and re.match(r"```", line):
            fence, block, first = True, [], number + 1
        elif fence is not None and line.startswith("```"):
            yield mark, first, block
            fence, block, mark = None, [], ""
        elif fence is not None:
            block.append(line)
        elif line.startswith("    "):
            first = first if block else number
            block.append(line[4:])
        elif block and line.strip() == "" and number < len(lines) and lines[number].startswith("    "):
            block.append("")
        else:
            if block:
                yield mark, first, block
                block, mark = [], ""
            if line.strip():
                found = re.match(r"<!-- (slow|not run) -->", line)
                mark = found.group(1) if found else ""


def commands_of(block, first):
    """Commands with the number of their line and the lines that they print."""
    commands = []
    goes_on = False
    for number, line in enumerate(block, first):
        if goes_on:
            commands[-1][1] += "\n" + line
        elif line.startswith("$ "):
            commands.append([number, line[2:], []])
        elif commands:
            commands[-1][2].append(line)
        goes_on = bool(commands) and not commands[-1][2] and \
            commands[-1][1].rstrip().endswith(("\\", "|"))
    return commands


def words(line):
    return " ".join(line.split())


def difference(expected, actual):
    """The first expected line that is not there; None when all are."""
    expected = [words(line) for line in expected]
    while expected and not expected[-1]:
        expected.pop()
    actual = [words(line) for line in actual.splitlines()]
    place, is_free = 0, False
    for line in expected:
        if line == "...":
            is_free = True
            continue
        while is_free and place < len(actual) and actual[place] != line:
            place += 1
        if place >= len(actual) or actual[place] != line:
            return line
        place, is_free = place + 1, False
    if expected and not is_free and any(actual[place:]):
        return next(line for line in actual[place:] if line) + "   (printed, not shown)"
    return None


def main():
    arguments = sys.argv[1:]
    is_slow = "--slow" in arguments
    arguments = [argument for argument in arguments if argument != "--slow"]
    source, program, scratch = (pathlib.Path(argument).resolve() for argument in arguments[:3])
    environment = dict(os.environ, PATH=f"{program}:{os.environ['PATH']}", LC_ALL="C.UTF-8")
    faults = count = 0
    for page in arguments[3:]:
        folder = scratch / page.replace("/", "_")
        subprocess.run(["rm", "-rf", folder], check=True)
        folder.mkdir(parents=True)
        (folder / "examples").symlink_to(source / "examples")
        lines = (source / page).read_text(encoding="utf-8").splitlines()
        for mark, first, block in blocks_of(lines):
            if mark == "not run" or (mark == "slow" and not is_slow):
                continue
            for number, command, expected in commands_of(block, first):
                count += 1
                run = subprocess.run(["bash", "-o", "pipefail", "-c", command], cwd=folder,
                                     env=environment, capture_output=True, text=True)
                missing = difference(expected, run.stdout)
                if run.returncode != 0 or missing is not None:
                    faults += 1
                    print(f"{page}:{number}: {command}\n  exit status {run.returncode}; "
                          f"not as shown: {missing}\n{run.stderr[-2000:]}")
    print(f"{count} commands, {faults} not as the pages show")
    sys.exit(1 if faults or not count else 0)


main()

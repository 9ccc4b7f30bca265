#!/usr/bin/env python3
"""Plants single faults in engine and program and tells which of them the tests miss.

Each fault stands at a seeded random place, is built in a copy of the commit in a build folder of
its own, and meets the tests of the program and those of its room until one fails. A fault that
does not compile, or that leaves library and program as they are, is replaced by the next.

usage: tools/mutate.py [--seed N] [--count N] [--paths PATH...] [--build-dir DIR] [--jobs N]
                       [--time-limit SECONDS] [--cmake=-DNAME=VALUE ...] [--list]
"""
import argparse
import hashlib
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import time
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# Folders of tests that a fault in a room meets, in this order; a folder is built when it is needed.
TESTS_OF_ROOM = {
    "core": ("cli", "core", "input", "levels", "intensity", "photophysics", "structure"),
    "input": ("cli", "input", "structure", "photophysics"),
    "intensity": ("cli", "intensity", "fitting"),
    "levels": ("cli", "levels", "fitting"),
    "photophysics": ("cli", "photophysics"),
    "fitting": ("cli", "fitting"),
    "structure": ("cli", "structure"),
    "cli": ("cli", "fitting"),
}

# What no fault is planted in: comments, texts, characters, preprocessor lines, assertions.
MASKED = re.compile(
    r"//[^\n]*|/\*.*?\*/|R\"\((?:.|\n)*?\)\"|\"(?:\\.|[^\"\\\n])*\"|'(?:\\.|[^'\\\n])+'"
    r"|^[ \t]*#(?:\\\n|[^\n])*|\b(?:Q_ASSERT(?:_X)?|static_assert)\s*\([^;]*;",
    re.DOTALL | re.MULTILINE)

OPERATORS = {
    " < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > ", " == ": " != ", " != ": " == ",
    " && ": " || ", " || ": " && ", " + ": " - ", " - ": " + ", " * ": " / ", " / ": " * ",
    " += ": " -= ", " -= ": " += ", " *= ": " /= ", " /= ": " *= ",
}
TEXTS = re.compile(r"QLatin|QString|text|column|tr\(")  # these cannot be subtracted
OPERAND = r"[A-Za-z_]\w*(?:(?:\.|->|::)\w+)*(?:\(\)|\[\w+\])?|\d+(?:\.\d+)?"
PATTERNS = {
    "operator": re.compile("|".join(re.escape(text) for text in OPERATORS)),
    "sign": re.compile(rf"(?<=[=(,*/?:] )-(?=[\w(])|(?<=\()-(?=[\w(])|(?<=return )-(?=[\w(])"
                       rf"|(?<=[*/] )(?=(?:{OPERAND})[ ;)])|(?<== )(?=(?:{OPERAND}) [*/])"
                       rf"|(?<=return )(?=(?:{OPERAND}) [*/])"),
    "constant": re.compile(r"(?<![\w.])\d+\.\d+(?:e[-+]?\d+)?(?![\w.])"),
    "off-by-one": re.compile(r"(?<![\w.])(?<!e[-+])\d+(?![\w.'])"),
    "swap": re.compile(rf"(?<=\w\()(?<!max\()(?<!min\()(?!\w+\W+c?begin\b)"
                       rf"({OPERAND}), ({OPERAND})(?=[,)])"),
}


@dataclass
class Fault:
    """A change of the text of one file."""
    path: str
    start: int
    end: int
    kind: str
    before: str
    after: str

    def describe(self, text):
        line = text.count("\n", 0, self.start) + 1
        first = text.rfind("\n", 0, self.start) + 1
        last = text.find("\n", self.end)
        changed = text[first:self.start] + self.after + text[self.end:last]
        return (f"{self.path}:{line}  {self.kind}\n"
                f"    - {text[first:last].strip()}\n    + {changed.strip()}")


def replacement(kind, match, generator):
    """What a place becomes; empty where no fault can be made of it, or none that compiles."""
    text = match.group(0)
    if kind == "operator":
        around = match.string[max(0, match.start() - 30):match.end() + 20]
        is_text = text.strip("= ") in ("+", "-") and TEXTS.search(around)
        return "" if is_text else OPERATORS[text]
    if kind == "sign":
        return " " if text == "-" else "-"
    if kind == "constant":
        value = float(text)
        return repr(value * 1.01) if value else ""
    if kind == "off-by-one":
        value = int(text)
        return str(value + 1 if value == 0 or generator.random() < 0.5 else value - 1)
    first, second = match.groups()
    is_mixed = first[0].isdigit() != second[0].isdigit()
    return f"{second}, {first}" if first != second and not is_mixed else ""


def text_of(path, commit):
    return must(["git", "show", f"{commit}:{path}"], ROOT)


def places(paths, commit):
    """All places of each kind: {kind: [(path, match)]}."""
    files = must(["git", "ls-tree", "-r", "--name-only", commit, *paths], ROOT).split()
    found = {kind: [] for kind in PATTERNS}
    for name in files:
        if not name.endswith((".cpp", ".h")):
            continue
        text = text_of(name, commit)
        masked = MASKED.sub(lambda m: re.sub(r"[^\n]", "\0", m.group(0)), text)
        for kind, pattern in PATTERNS.items():
            found[kind] += [(name, match) for match in pattern.finditer(masked)]
    return found


def faults(paths, commit, seed):
    """Endless different faults, the kinds in equal shares."""
    generator = random.Random(seed)
    found = places(paths, commit)
    kinds = [kind for kind in found if found[kind]]
    for kind in kinds:
        generator.shuffle(found[kind])
    while any(found.values()):
        kind = generator.choice(kinds)
        if not found[kind]:
            continue
        path, match = found[kind].pop()
        after = replacement(kind, match, generator)
        if after:
            yield Fault(path, match.start(), match.end(), kind, match.group(0), after)


def run(command, folder, limit=None):
    """Exit status and output; the status is None when the time limit ends it."""
    process = subprocess.Popen(command, cwd=folder, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, text=True, start_new_session=True)
    try:
        output, _ = process.communicate(timeout=limit)
        return process.returncode, output
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        process.communicate()
        return None, ""


def must(command, folder):
    status, output = run(command, folder)
    if status != 0:
        sys.exit(f"{' '.join(command)}:\n{output}")
    return output


class Workshop:
    """A copy of the commit with a build folder of its own."""

    def __init__(self, options, commit):
        self.jobs = str(options.jobs)
        self.limit = options.time_limit
        # As deep as other build folders, so that a shared cache of the compiler knows its paths.
        self.source = options.build_dir / "source"
        self.build = self.source / "build" / "mutate"
        if self.source.exists():
            must(["git", "checkout", "--quiet", "--force", "--detach", commit], self.source)
        else:
            must(["git", "worktree", "add", "--quiet", "--detach", str(self.source), commit], ROOT)
        configure = ["cmake", "-S", str(self.source), "-B", str(self.build), "-G", "Ninja",
                     "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", *options.cmake]
        if shutil.which("ld.lld"):
            configure.append("-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld")
        if shutil.which("ccache"):
            configure.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        must(configure, self.source)
        self.sound_folders = set()
        if not self.builds("lanqor"):
            sys.exit("the commit does not build")
        self.sound = self.products()

    def builds(self, *targets):
        return run(["ninja", "-C", str(self.build), "-j", self.jobs, *targets], ROOT)[0] == 0

    def products(self):
        """Digest of library and program."""
        digest = hashlib.sha256((self.build / "cli" / "lanqor").read_bytes())
        for library in sorted(self.build.rglob("libLanqorEngine.so*")):
            digest.update(library.read_bytes())
        return digest.hexdigest()

    def killer(self, folder):
        """The first test of a folder that fails; empty when all pass."""
        if not self.builds("lanqor", f"tests/{folder}/all"):
            return f"compiler in tests/{folder}"
        status, output = run(["ctest", "--test-dir", str(self.build / "tests" / folder),
                              "--stop-on-failure", "-j", self.jobs], ROOT, self.limit)
        if status == 0:
            return ""
        failed = re.findall(r"(\w+) \.+\**(?:Failed|Exception|Timeout|Subprocess|Not Run)", output)
        return ", ".join(dict.fromkeys(failed)) if failed else f"time limit in tests/{folder}"

    def verdict(self, fault, text):
        """Killed by what, "SURVIVED", or empty when the fault is none."""
        file = self.source / fault.path
        faulty = text[:fault.start] + fault.after + text[fault.end:]
        try:
            file.write_text(faulty)
            if not self.builds("lanqor") or self.products() == self.sound:
                return ""
            for folder in TESTS_OF_ROOM[room_of(fault.path)]:
                if folder not in self.sound_folders:
                    file.write_text(text)
                    killer = self.killer(folder)
                    if killer:
                        sys.exit(f"the commit fails its own tests: {killer}")
                    self.sound_folders.add(folder)
                    file.write_text(faulty)
                killer = self.killer(folder)
                if killer:
                    return f"killed by {killer}"
            return "SURVIVED"
        finally:
            file.write_text(text)


def room_of(path):
    parts = Path(path).parts
    room = parts[1] if parts[0] == "engine" and len(parts) > 1 else parts[0]
    return room if room in TESTS_OF_ROOM else ""


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=60)
    parser.add_argument("--paths", nargs="+", default=["engine", "cli"])
    parser.add_argument("--build-dir", type=Path, default=ROOT / "build" / "mutate")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1)
    parser.add_argument("--time-limit", type=float, default=300.0,
                        help="seconds of tests for a fault; one that hangs is caught")
    parser.add_argument("--cmake", action="append", default=[], help="option of the configuration")
    parser.add_argument("--list", action="store_true", help="only show the faults")
    options = parser.parse_args()
    options.build_dir = options.build_dir.resolve()

    commit = must(["git", "rev-parse", "HEAD"], ROOT).strip()
    workshop = None if options.list else Workshop(options, commit)
    planted, survivors, begun = 0, [], time.monotonic()
    for fault in faults(options.paths, commit, options.seed):
        if planted == options.count:
            break
        text = text_of(fault.path, commit)
        verdict = workshop.verdict(fault, text) if workshop else "listed"
        if not verdict:
            continue
        planted += 1
        print(f"{planted:3d}  {fault.describe(text)}\n    {verdict}", flush=True)
        if verdict == "SURVIVED":
            survivors.append(fault.describe(text))
    if not workshop:
        return
    print(f"\nseed {options.seed}: {planted} faults, {planted - len(survivors)} killed, "
          f"{len(survivors)} survived, {time.monotonic() - begun:.0f} s")
    print("\n".join(survivors))


if __name__ == "__main__":
    main()

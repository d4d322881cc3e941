#!/usr/bin/env python3
"""Runs clang-tidy over the repository's own .cpp files, several at a time.

  scripts/tidy.py [--jobs N] [--build FOLDER] [FILE ...]

Most of what a check costs is looking through the headers, so files of one folder that are compiled alike are joined to
one; a batch in which anything is found is checked again in halves, down to the file.
A file that came out clean is remembered under build/tidy-cache and skipped until it changes, a header of the repository
that it includes (directly or not) changes, or .clang-tidy, its compile command or clang-tidy itself does.
FILE limits the run to these files; the build folder must hold compile_commands.json and be built, for the generated
files.
"""

import argparse
import concurrent.futures
import hashlib
import json
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
CACHE = ROOT / "build" / "tidy-cache"
COMMANDS = ROOT / "build" / "tidy-commands"
TIDY = "clang-tidy-14"
BATCH = 6
# gcc's, which clang cannot read.
PRECOMPILED = re.compile(r" -include \S*/cmake_pch\.hxx")
INCLUDE = re.compile(rb'^[ \t]*#[ \t]*include[ \t]*[<"]([^">\n]+)[">]', re.MULTILINE)


class Inputs:
    """What clang-tidy's answer for a file depends on, each file read once."""

    def __init__(self, common):
        self._common = common
        self._read = {}

    def _digest_and_includes(self, path):
        if path not in self._read:
            content = path.read_bytes()
            names = [name.decode("utf-8", "replace") for name in INCLUDE.findall(content)]
            self._read[path] = (hashlib.sha256(content).hexdigest(), names)
        return self._read[path]

    def key(self, source, command, include_folders):
        pending, seen = [source], set()
        while pending:
            path = pending.pop()
            if path in seen:
                continue
            seen.add(path)
            for name in self._digest_and_includes(path)[1]:
                for folder in (path.parent, *include_folders):
                    candidate = (folder / name).resolve()
                    if is_ours(candidate) and candidate.is_file():
                        pending.append(candidate)
                        break
        parts = [self._common, command.replace(str(ROOT), "")]
        parts += [f"{path.relative_to(ROOT)} {self._digest_and_includes(path)[0]}" for path in sorted(seen)]
        return hashlib.sha256("\n".join(parts).encode()).hexdigest()


def is_ours(path):
    """In the repository and not generated."""
    return path.is_relative_to(ROOT) and not path.is_relative_to(ROOT / "build")


def include_folders(command):
    folders = []
    words = shlex.split(command)
    for index, word in enumerate(words):
        if word in ("-I", "-isystem") and index + 1 < len(words):
            folders.append(pathlib.Path(words[index + 1]))
        elif word.startswith("-I"):
            folders.append(pathlib.Path(word[2:]))
    return [folder for folder in folders if is_ours(folder)]


def sources_to_check(build, only):
    """Source and entry of the compile database of each file that is ours; each once, whatever the number of targets it
    is in."""
    database = build / "compile_commands.json"
    if not database.is_file():
        sys.exit(f"tidy: {database} is missing: build the dev preset first")
    found = {}
    for entry in json.loads(database.read_text(encoding="utf-8")):
        source = (pathlib.Path(entry["directory"]) / entry["file"]).resolve()
        if is_ours(source) and source.is_file() and (not only or source in only):
            found.setdefault(source, {**entry, "command": PRECOMPILED.sub("", entry["command"])})
    unknown = sorted(only - found.keys())
    if unknown:
        sys.exit("tidy: not in " + str(database) + ": " + ", ".join(map(str, unknown)))
    if not found:
        sys.exit(f"tidy: {database} names no file of ours")
    return found


def batches(pending, sources):
    """The files in lists of at most BATCH of one folder, whose commands differ in nothing but the file."""
    alike = {}
    for source in pending:
        command = re.sub(r" -o \S+", "", sources[source]["command"]).replace(str(source), "")
        alike.setdefault((source.parent, command), []).append(source)
    return [group[i:i + BATCH] for group in alike.values() for i in range(0, len(group), BATCH)]


def joined(batch):
    """One text of the files' texts, each header named once."""
    seen, parts = set(), []
    for source in batch:
        lines = source.read_text(encoding="utf-8").splitlines(keepends=True)
        included = {line for line in lines if INCLUDE.match(line.encode())}
        parts += ["\n" if line in seen else line for line in lines]
        seen |= included
    return "".join(parts)


def run(folder, source):
    """(exit status, output); what clang-tidy says of warnings it suppressed is left out."""
    done = subprocess.run([TIDY, "--quiet", f"--config-file={ROOT / '.clang-tidy'}", "-p", str(folder), str(source)],
                          cwd=ROOT, text=True, errors="replace", stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          check=False)
    output = done.stdout
    if done.returncode != 0:
        output += "\n".join(line for line in done.stderr.splitlines() if not re.match(r"\d+ (warnings|errors)", line))
    return done.returncode, output.strip()


def tidy(batch, sources):
    """Checks the files together: [(file, exit status, output)]."""
    if len(batch) == 1:
        return [(batch[0], *run(COMMANDS, batch[0]))]
    entry = sources[batch[0]]
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        together = folder / batch[0].name
        together.write_text(joined(batch), encoding="utf-8")
        command = f"{entry['command'].replace(str(batch[0]), str(together))} -I{batch[0].parent}"
        (folder / "compile_commands.json").write_text(
            json.dumps([{**entry, "command": command, "file": str(together)}]), encoding="utf-8")
        status, _ = run(folder, together)
    if status == 0:
        return [(source, 0, "") for source in batch]
    half = len(batch) // 2
    return tidy(batch[:half], sources) + tidy(batch[half:], sources)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build" / "dev")
    parser.add_argument("files", nargs="*", type=pathlib.Path, metavar="FILE")
    options = parser.parse_args()
    build = options.build.resolve()
    only = {path.resolve() for path in options.files}

    version = subprocess.run([TIDY, "--version"], text=True, stdout=subprocess.PIPE, check=True).stdout
    inputs = Inputs(version + (ROOT / ".clang-tidy").read_text(encoding="utf-8"))
    sources = sources_to_check(build, only)
    keys = {source: inputs.key(source, entry["command"], include_folders(entry["command"]))
            for source, entry in sources.items()}

    COMMANDS.mkdir(parents=True, exist_ok=True)
    (COMMANDS / "compile_commands.json").write_text(json.dumps(list(sources.values())), encoding="utf-8")
    CACHE.mkdir(parents=True, exist_ok=True)
    if not only:
        for stale in {entry.name for entry in CACHE.iterdir()} - set(keys.values()):
            (CACHE / stale).unlink()
    pending = [source for source in sorted(sources) if not (CACHE / keys[source]).exists()]
    print(f"tidy: {len(pending)} of {len(sources)} files to check", flush=True)

    failed = []
    done = 0
    start = time.monotonic()
    with concurrent.futures.ThreadPoolExecutor(max_workers=max(1, options.jobs)) as pool:
        running = [pool.submit(tidy, batch, sources) for batch in batches(pending, sources)]
        for future in concurrent.futures.as_completed(running):
            for source, status, output in future.result():
                name = source.relative_to(ROOT)
                if status == 0:
                    (CACHE / keys[source]).write_text(f"{name}\n", encoding="utf-8")
                else:
                    failed.append(name)
                    print(f"{name}: FAILED\n{output}", flush=True)
            done += len(future.result())
            print(f"[{done}/{len(pending)}] at {time.monotonic() - start:.0f} s", flush=True)
    for name in sorted(failed):
        print(f"tidy: {name} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())

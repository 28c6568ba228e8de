#!/usr/bin/env python3
"""known_answer.py VELAENC DATA NAME: one short run must give what it always gave, to the bit.

DATA/answers/NAME holds the arguments, the printed lines (pid and times masked), the carriers, the
plots (first line masked) and a line per candidate, which finds the first place where a change
parts from the answer.  VELAENC must be built with the switches for tests.
"""
import json
import os
import re
import subprocess
import sys
import tempfile

MASKS = [
    (r"^pid: \d+$", "pid: N"),
    (r"^Start \d+, stop \d+", "Start N, stop N"),
    (r"^(Total duration: |Lowpass: |Encoding: |\*\*\* Not accounted for: ).*$", r"\1..."),
    (r"^#Created by .*$", "#Created"),
]
NOT_WRITTEN_BY_THE_RUN = {"arguments.txt", "stdout.txt", "candidates.jsonl"}


def masked_lines(data):
    text = data.decode("latin1")
    for pattern, replacement in MASKS:
        text = re.sub(pattern, replacement, text, flags=re.M)
    lines = text.split("\n")
    # The profiler lists its marks in the order of their addresses.
    marks = [line for line in lines if line.startswith(("Lowpass: ", "Encoding: "))]
    return sorted(marks) + [line for line in lines if line not in marks]


def read(path):
    with open(path, "rb") as file:
        return file.read()


def first_difference(want, got, name):
    for number, (a, b) in enumerate(zip(want, got), 1):
        if a != b:
            return [f"{name}, line {number}:\n  want {a}\n  got  {b}"]
    return [] if len(want) == len(got) else [f"{name}: want {len(want)} lines, got {len(got)}"]


def compare_candidates(want, got):
    values = [[json.loads(line) for line in data.splitlines()] for data in (want, got)]
    return first_difference(*values, "candidates")


def compare_file(name, want, got):
    if name.endswith(".wav"):
        at = next((i for i, (a, b) in enumerate(zip(want, got)) if a != b), min(len(want), len(got)))
        return [] if want == got else [f"{name} differs from byte {at} on (sample {(at - 44) // 3})"]
    return first_difference(masked_lines(want), masked_lines(got), name)


def differences(program, data, name):
    """What is wrong, as texts."""
    answer = os.path.join(data, "answers", name)
    with tempfile.TemporaryDirectory() as top:
        for link in ("input", "metadata.txt"):
            os.symlink(os.path.join(data, link), os.path.join(top, link))
        folder = os.path.join(top, "answers", "run")
        os.makedirs(folder)
        candidates = os.path.join(top, "candidates.jsonl")
        arguments = read(os.path.join(answer, "arguments.txt")).decode().split("\n")[:-1]
        run = subprocess.run([program] + arguments, cwd=folder, capture_output=True,
                             stdin=subprocess.DEVNULL, env={**os.environ, "VELA_CANDIDATES": candidates})

        faults = [f"exit status {run.returncode}"] if run.returncode else []
        faults += [f"standard error: {run.stderr.decode()}"] if run.stderr else []
        faults += first_difference(masked_lines(read(os.path.join(answer, "stdout.txt"))),
                                   masked_lines(run.stdout), "standard output")
        faults += compare_candidates(read(os.path.join(answer, "candidates.jsonl")), read(candidates))
        want = set(os.listdir(answer)) - NOT_WRITTEN_BY_THE_RUN
        got = set(os.listdir(folder)) - {"encode_time.txt"}
        faults += [f"{file} is missing" for file in sorted(want - got)]
        faults += [f"{file} is not wanted" for file in sorted(got - want)]
        for file in sorted(want & got):
            faults += compare_file(file, read(os.path.join(answer, file)),
                                   read(os.path.join(folder, file)))
    return faults


def main(program, data, name):
    faults = differences(program, data, name)
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*(os.path.abspath(path) for path in sys.argv[1:3]), sys.argv[3]))

#!/usr/bin/env python3
"""Memory that an encode takes at its peak, for a minute of audio and for an hour of it.

    memory_growth.py [MINUTES...]           by default 1 60; exit status 1 if it grows by a megabyte
"""
import os
import subprocess
import sys
import tempfile
import time

from support import VELAENC, tone_in_noise, write_wav

RATE = 48000
LAYOUT, CHANNELS = "stereo", ("L", "R")
LOOP = 10  # seconds that are repeated
ALLOWED_GROWTH = 1.0  # megabytes: what the allocator leaves to chance


def lengthen(path, times):
    """Repeats the samples of a file, whose header is 44 bytes, and tells the new sizes."""
    with open(path, "rb") as file:
        content = file.read()
    size = (len(content) - 44) * times
    with open(path, "wb") as file:
        file.write(content[:4] + (size + 36).to_bytes(4, "little") + content[8:40]
                   + size.to_bytes(4, "little"))
        for _ in range(times):
            file.write(content[44:])


def high_water_megabytes(pid):
    """What the process has taken so far; None once it is gone."""
    with open(f"/proc/{pid}/status", encoding="ascii") as file:
        for line in file:
            if line.startswith("VmHWM:"):
                return int(line.split()[1]) / 1024
    return None


def peak_megabytes(minutes):
    with tempfile.TemporaryDirectory() as folder:
        call = [VELAENC, "-p", "Vela-Codec", "-l", LAYOUT, "-f", "1024", "-o", "enc_"]
        for number, channel in enumerate(CHANNELS):
            path = os.path.join(folder, channel + ".wav")
            write_wav(path, tone_in_noise(LOOP * RATE, number), RATE)
            lengthen(path, minutes * 60 // LOOP)
            call += ["-i", f"{channel}:{path}"]
        with open(os.path.join(folder, "report.txt"), "w", encoding="ascii") as report:
            process = subprocess.Popen(call, cwd=folder, stdout=report)
        peak = 0.0
        while process.poll() is None:
            peak = high_water_megabytes(process.pid) or peak
            time.sleep(0.05)
        expected = minutes * 60 * RATE * 3
        if process.returncode != 0 or os.path.getsize(os.path.join(folder, "enc_C.wav")) < expected:
            sys.exit(f"{minutes} minutes: the encode fails")
        return peak


def main(lengths):
    peaks = [peak_megabytes(minutes) for minutes in lengths]
    print(", ".join(f"{peak:.1f} MB at {minutes} min" for minutes, peak in zip(lengths, peaks)))
    return 1 if peaks[-1] > peaks[0] + ALLOWED_GROWTH else 0


if __name__ == "__main__":
    sys.exit(main([int(word) for word in sys.argv[1:]] or [1, 60]))

"""What the tests of the whole way share: audio in, velaenc, carrier-check, figures out."""
import array
import json
import math
import os
import random
import re
import subprocess
import sys

VELAENC = os.path.abspath(os.environ.get("VELAENC", "velaenc"))
CARRIER_CHECK = os.path.abspath(os.environ.get("CARRIER_CHECK", "carrier-check"))

FULL_SCALE = 0x7FFFFF

# Input layouts that have a carrier: their channels, and the carrier's.
LAYOUTS = {
    "mono": ("C", "C"),
    "stereo": ("L R", "C"),
    "lcr": ("L R C", "L R"),
    "lcrs": ("L R C Cs", "L R"),
    "quad": ("L R Ls Rs", "L R"),
    "5.0": ("L R C Ls Rs", "L R"),
    "vela6.0": ("L R Ls Rs HL HR", "L R"),
    "5.1": ("L R C LFE Ls Rs", "L R LFE"),
    "surround6.0": ("L R C Ls Rs Cs", "L R C Ls Rs"),
    "7.0": ("L R C Ls Rs Lb Rb", "L R C Ls Rs"),
    "9.0": ("L R C Ls Rs HL HR HLs HRs", "L R C Ls Rs"),
    "10.0": ("L R C Ls Rs HL HR T HLs HRs", "L R C Ls Rs"),
    "11.0": ("L R C Ls Rs HL HR HC T HLs HRs", "L R C Ls Rs"),
    "surround6.1": ("L R C LFE Ls Rs Cs", "L R C LFE Ls Rs"),
    "7.1": ("L R C LFE Ls Rs Lb Rb", "L R C LFE Ls Rs"),
    "height7.1": ("L R C LFE Ls Rs HL HR", "L R C LFE Ls Rs"),
    "9.1": ("L R C LFE Ls Rs HL HR HLs HRs", "L R C LFE Ls Rs"),
    "10.1": ("L R C LFE Ls Rs HL HR T HLs HRs", "L R C LFE Ls Rs"),
    "11.1": ("L R C LFE Ls Rs HL HR HC T HLs HRs", "L R C LFE Ls Rs"),
    "8.0": ("L R Ls Rs HL HR HLs HRs", "L R Ls Rs"),
    "11.0b": ("L R C Ls Rs Lb Rb HL HR HLs HRs", "L R C Ls Rs Lb Rb"),
    "12.0": ("L R C Ls Rs Lb Rb HL HR T HLs HRs", "L R C Ls Rs Lb Rb"),
    "13.0": ("L R C Ls Rs Lb Rb HL HR HC T HLs HRs", "L R C Ls Rs Lb Rb"),
    "height9.1": ("L R C LFE Ls Rs Lb Rb HL HR", "L R C LFE Ls Rs Lb Rb"),
    "11.1b": ("L R C LFE Ls Rs Lb Rb HL HR HLs HRs", "L R C LFE Ls Rs Lb Rb"),
    "12.1": ("L R C LFE Ls Rs Lb Rb HL HR T HLs HRs", "L R C LFE Ls Rs Lb Rb"),
    "13.1": ("L R C LFE Ls Rs Lb Rb HL HR HC T HLs HRs", "L R C LFE Ls Rs Lb Rb"),
    "testmix2": ("C HC", "C"),
    "testmix3": ("C HC T", "C"),
}


def channels_of(layout):
    return LAYOUTS[layout][0].split()


def carriers_of(layout):
    return LAYOUTS[layout][1].split()


def tone(count, frequency, level=0.5, rate=48000):
    return [round(level * FULL_SCALE * math.sin(2 * math.pi * frequency * t / rate))
            for t in range(count)]


def noise(count, seed, level=0.25):
    engine = random.Random(seed)
    peak = round(level * FULL_SCALE)
    return [engine.randint(-peak, peak) for _ in range(count)]


def tone_in_noise(count, index):
    """What the channels of a scene have: each something of its own, all of one kind."""
    return [a + b for a, b in zip(tone(count, 150 + 97 * index, 0.3), noise(count, index, 0.01))]


def write_wav(path, samples, rate=48000):
    words = array.array("i", samples).tobytes()
    data = bytearray(3 * len(samples))
    for byte in range(3):
        data[byte::3] = words[byte::4]
    pad = b"\0" * (len(data) % 2)
    header = b"WAVEfmt " + (16).to_bytes(4, "little")
    for value, size in ((1, 2), (1, 2), (rate, 4), (3 * rate, 4), (3, 2), (24, 2)):
        header += value.to_bytes(size, "little")
    header += b"data" + len(data).to_bytes(4, "little")
    body = header + bytes(data) + pad
    with open(path, "wb") as file:
        file.write(b"RIFF" + len(body).to_bytes(4, "little") + body)


class Run:
    """One call of velaenc in a folder, with one input file per channel."""

    def __init__(self, folder, layout, audio, frame_size, *options, rate=48000, prefix="enc_",
                 threads=0):
        self.folder, self.layout, self.frame_size, self.prefix = folder, layout, frame_size, prefix
        inputs = []
        for channel in channels_of(layout):
            path = os.path.join(folder, channel + ".wav")
            write_wav(path, audio[channel], rate)
            inputs += ["-i", f"{channel}:{path}"]
        self.process = subprocess.run(
            [VELAENC, "-p", "Vela-Codec", "-l", layout, "-f", str(frame_size), "-j", str(threads),
             "-o", prefix, *inputs, *options],
            cwd=folder, capture_output=True, text=True, stdin=subprocess.DEVNULL)

    @property
    def failed(self):
        return self.process.returncode == 255 and "Failure with ReturnCode 1" in self.process.stdout

    @property
    def succeeded(self):
        return self.process.returncode == 0 and not self.process.stderr

    def carrier(self, channel):
        return os.path.join(self.folder, f"{self.prefix}{channel}.wav")

    def carrier_bytes(self):
        result = {}
        for channel in carriers_of(self.layout):
            with open(self.carrier(channel), "rb") as file:
                result[channel] = file.read()
        return result

    def progress(self):
        return re.findall(r"^Progress: (.*)$", self.process.stdout, re.MULTILINE)

    def printed_quality(self):
        """(dbrms, dbpeak, crest) by channel, and for "all"."""
        figures = r"\{dbrms: (\S+)\}\t\{dbpeak: (\S+)\}\t\{crest: (\S+)\}"
        one = re.findall(r"Quality metrics: \{channel: (\w+)\} *" + figures, self.process.stdout)
        all_ = re.search(r"Quality metrics for all channels: *" + figures, self.process.stdout)
        return {"all": tuple(map(float, all_.groups())),
                **{name: tuple(map(float, rest)) for name, *rest in one}}

    def check(self, *options, files=None, originals=True):
        """What carrier-check finds in the carriers (or in `files`), compared with the inputs."""
        compare = []
        for channel in channels_of(self.layout) if originals else ():
            compare += ["--original", f"{channel}={os.path.join(self.folder, channel)}.wav"]
        process = subprocess.run(
            [CARRIER_CHECK, "--frame-size", str(self.frame_size), "--layout", self.layout, "--json",
             *compare, *options, *(files or map(self.carrier, carriers_of(self.layout)))],
            capture_output=True, text=True)
        return json.loads(process.stdout)


def differing_figures(printed, found):
    """Names of the channels whose dbrms or dbpeak differ by more than 0.01 dB."""
    rebuilt = {entry["channel"]: entry for entry in found["quality"]}
    rebuilt["all"] = found["quality_all"]
    if rebuilt.keys() != printed.keys():
        return sorted(rebuilt.keys() ^ printed.keys())
    return [name for name, (dbrms, dbpeak, _) in printed.items()
            if abs(dbrms - rebuilt[name]["dbrms"]) > 0.01
            or abs(dbpeak - rebuilt[name]["dbpeak"]) > 0.01]


def problems_of(found):
    return found["problems"] + [text for carrier in found["carriers"] for text in carrier["problems"]]

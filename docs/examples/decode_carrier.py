#!/usr/bin/env python3
"""Takes mono carriers apart, by docs/carrier-format.md alone: no code of the encoder is used.

    decode_carrier.py [--rebuild PREFIX] [NAME=ORIGINAL]... [MEMBERS@CARRIER]...

MEMBERS are the channels that the layout puts into that carrier, such as L+HL@enc_L.wav.  Of the
channels with an original (L=L.wav) it prints the errors; with a prefix it writes all as 24-bit WAV.
"""
import math
import struct
import sys
import wave

NAMES = "L R C LFE Ls Rs Cs Lb Rb HL HR HC T HLs HRs HCs HLb HRb LC RC LFE2 BL BR BC".split()
OPERAND_BITS = {30: (8,), 64: (8, 8), 65: (8,), 70: (32,), 71: (8,), 80: (8,), 100: (24,),
                110: (32,), **{opcode: (32,) for opcode in range(128, 134)}}
GROUP_SCALER, CHANNEL_ATTENUATION, MUTED = 65, 64, 255
FLOOR = 10 ** (-144 / 20)


class Damaged(Exception):
    """A file or block that is not what was written."""


def require(condition, what):
    if not condition:
        raise Damaged(what)


def read_wav(path):
    with open(path, "rb") as file:
        content = file.read()
    chunks, at = {}, 12
    while at + 8 <= len(content):
        name, size = content[at:at + 4], int.from_bytes(content[at + 4:at + 8], "little")
        chunks[name] = content[at + 8:at + 8 + size]
        at += 8 + size + size % 2
    channels, rate, bits = struct.unpack("<2xHI6xH", chunks[b"fmt "][:16])
    require((channels, bits) == (1, 24), path + " is not mono with 24 bits")
    data = chunks[b"data"]
    return [int.from_bytes(data[i:i + 3], "little", signed=True) for i in range(0, len(data), 3)], rate


def write_wav(path, samples, rate):
    with wave.open(path, "wb") as file:
        file.setparams((1, 3, rate, 0, "NONE", ""))
        file.writeframes(b"".join((x & 0xFFFFFF).to_bytes(3, "little") for x in samples))


def single(x):  # rounded to single precision
    return struct.unpack("f", struct.pack("f", x))[0]


def gain(index):  # of a scaler index
    exact = {60: 2.0, 120: 4.0, 180: 8.0, 240: 16.0}
    return single(exact.get(index, float(f"{10 ** (index / 200):.9e}")))


CRC_TABLE = []
for byte in range(256):
    crc = byte << 8
    for _ in range(8):
        crc = crc << 1 ^ (0x11021 if crc & 0x8000 else 0)
    CRC_TABLE.append(crc)


def crc_of(data):
    crc = 0
    for byte in data:
        crc = (crc << 8 & 0xFF00) ^ CRC_TABLE[crc >> 8 ^ byte]
    return crc ^ 0xFFFF


def crc_of_block(samples):
    masked = [x & ~2 for x in samples[:16]] + samples[16:]
    return crc_of(b"".join((x & 0xFFFFFF).to_bytes(3, "little") for x in masked))


def find_blocks(samples):
    """The samples of each block; it starts 16 samples before a run of ones on line 0 ends."""
    starts, run = [], 0
    for t, x in enumerate(samples):
        if x & 1 == 0 and run >= 16:
            starts.append(t - 16)
        run = run + 1 if x & 1 else 0
    return [samples[start:stop] for start, stop in zip(starts, starts[1:] + [len(samples)])]


def word_on(line, samples):
    return sum((x >> line & 1) << (15 - t) for t, x in enumerate(samples[:16]))


def record_bits(samples, nr_lines):
    bits = [x >> line & 1 for line in (0, 1, 2) for x in samples[:16]]
    bits += [x >> line & 1 for x in samples[:16] for line in range(nr_lines - 1, 2, -1)]
    for t in range(16, len(samples)):
        bits += [samples[t] >> line & 1 for line in range(nr_lines - 1, -1 if t % 16 else 0, -1)]
    return bits


class Bits:
    """A record, read from its first bit on."""

    def __init__(self, bits):
        self.bits, self.at = bits, 0

    def take(self, count):
        require(self.at + count <= len(self.bits), "the record ends in the middle of a field")
        value = 0
        for bit in self.bits[self.at:self.at + count]:
            value = value << 1 | bit
        self.at += count
        return value

    def seed(self):
        value = self.take(32)
        return value - (value >> 31 << 32)

    def center(self, width):
        negative, magnitude = self.take(1), self.take(width - 1)
        return -magnitude if negative else magnitude

    def index(self, k):
        quotient = 0
        while self.take(1):
            quotient += 1
        return quotient << k | sum(self.take(1) << i for i in range(k))


class Block:
    def __init__(self, samples):
        require(word_on(0, samples) == 0xFFFF, "there is no sync word")
        require(word_on(1, samples) == crc_of_block(samples), "the checksum is wrong")
        self.nr_lines = 14 - (word_on(2, samples) & 0xF)
        self.mix = [x >> self.nr_lines for x in samples]
        bits = Bits(record_bits(samples, self.nr_lines))
        bits.take(32)  # sync word and checksum
        self.read_header(bits)
        self.seeds = [bits.seed() for _ in range({1: 0, 2: 2, 3: 5}[len(self.channels)])]
        if len(self.seeds) == 2:
            self.seeds.reverse()
        self.instructions = self.read_instructions(bits) if self.has_list else []
        self.centers, self.ixs = self.read_centers(bits), []
        if len(self.channels) > 1:
            self.ixs = [bits.index(self.rice_k) for _ in samples]
            require(max(self.ixs) < len(self.centers), "an index has no center")
        self.nr_spare_bits = len(bits.bits) - bits.at
        require(not any(bits.bits[bits.at:]), "the padding is not zero")

    def read_header(self, bits):
        code = bits.take(8)
        require(len(self.mix) in ((992, 1000) if code == 61 else (16 * code + 16,)), "other size")
        require(bits.take(3) == 1, "no encoded block")
        self.native_content = bits.take(1)
        bits.take(4)  # width of the mix
        self.version = bits.take(8), bits.take(8)
        self.dither = bits.take(1)
        require(bits.take(3) == 0, "unknown coding of the indices")
        self.rice_k, n, self.has_list, self.center_bits = map(bits.take, (4, 8, 8, 8))
        self.channels = [slot for slot in map(bits.take, (8,) * 4) if slot != 255]
        bits.take(32)
        self.nr_slots = (2 * n + 8 if n <= 4 else 4 * n if n <= 15 else
                         8 * n - 64 if n <= 83 else 16 * n - 712)

    @staticmethod
    def read_instructions(bits):  # each as its opcode and its operands
        require(bits.take(8) == 1, "unknown list")
        instructions = []
        while opcode := bits.take(8):
            require(opcode in OPERAND_BITS, f"unknown instruction {opcode}")
            instructions.append((opcode, *map(bits.take, OPERAND_BITS[opcode])))
        return instructions

    def read_centers(self, bits):
        """One element each for two channels, two for three; unused slots are read as well."""
        return list(zip(*([bits.center(self.center_bits) for _ in range(self.nr_slots)]
                          for _ in range(len(self.channels) - 1))))

    def scaler(self, *which):
        """Scaler index of the instruction that begins like this, 0 if there is none."""
        found = [i[-1] for i in self.instructions if i[:-1] == which]
        return found[0] if found else 0

    def rebuild(self):
        """24-bit samples by channel, attenuations of single channels still in force."""
        unmix = (lambda block: [block.mix], unmix_two, unmix_three)[len(self.channels) - 1]
        index, scale = self.scaler(GROUP_SCALER), 2 ** self.nr_lines
        restore = (lambda x: int(single(x * single(scale * gain(index))))) if index else scale.__mul__
        return {NAMES[channel]: list(map(restore, samples))
                for channel, samples in zip(self.channels, unmix(self))}


def unmix_two(block):
    m, s, c = block.mix, block.seeds, [block.centers[ix][0] for ix in block.ixs]
    x, y = [0] * len(m), [0] * len(m)
    y[0] = s[0] + c[0]
    x[0] = m[0] - y[0]
    x[1], x[2] = s[1] + c[1], 2 * s[1] - x[0]
    y[1] = m[1] - x[1]
    for t in range(2, len(m)):
        a, b = (x, y) if t % 2 == 0 else (y, x)  # a is anchored at t
        b[t] = m[t] - a[t]
        if t + 1 < len(m):
            b[t + 1] = 2 * (b[t] - c[t]) - b[t - 1]
    return x, y


def unmix_three(block):
    m, s, c = block.mix, block.seeds, [block.centers[ix] for ix in block.ixs]
    x, y, z = ([0] * (len(m) + 3) for _ in range(3))
    y[0], z[0] = s[0] + c[0][0], s[1] + c[0][1]
    x[0] = m[0] - y[0] - z[0]
    d = s[2] - x[0]
    x[1], x[2], x[3] = s[2] + c[1][0], s[2] + 2 * d + c[2][0], s[2] + 3 * d
    z[1] = s[3] + c[1][1]
    y[1] = m[1] - z[1] - x[1]
    d = s[4] - y[1]
    y[2], y[3], y[4] = s[4] + c[2][1], s[4] + 2 * d, s[4] + 3 * d
    z[2] = m[2] - y[2] - x[2]
    for t in range(3, len(m)):
        anchored, finishing, k, starting = ((x, y, 0, z), (y, z, 1, x), (z, x, 0, y))[t % 3]
        finishing[t] += c[t][k]
        v = m[t] - finishing[t] - anchored[t] - c[t][1 - k]
        d = v - starting[t - 1]
        starting[t:t + 3] = v + c[t][1 - k], v + 2 * d, v + 3 * d
    return x[:len(m)], y[:len(m)], z[:len(m)]


def attenuated(samples, index):
    """What of a channel goes into the mix."""
    if index == 0:
        return samples
    return [0 if index == MUTED else int(single(x / gain(index))) for x in samples]


def amplified(samples, index):
    """What a channel was before its attenuation, clipped; a muted one stays silent."""
    factor = 1 if index in (0, MUTED) else gain(index)
    return [max(-0x800000, min(0x7FFFFF, int(single(x * factor)))) for x in samples]


class Tally:
    """Errors of the blocks of a channel: their mean square and their largest peak."""

    def __init__(self):
        self.squares, self.peak = [], 0.0

    def add(self, errors):
        self.squares.append(max(sum(e * e for e in errors) / len(errors), FLOOR ** 2))
        self.peak = max(self.peak, FLOOR, *map(abs, errors))

    def add_channel(self, other):
        self.squares.append(sum(other.squares) / len(other.squares))
        self.peak = max(self.peak, other.peak)

    def __str__(self):
        rms = math.sqrt(sum(self.squares) / len(self.squares))
        return (f"{{dbrms: {20 * math.log10(rms):.6g}}}\t{{dbpeak: {20 * math.log10(self.peak):.6g}}}"
                f"\t{{crest: {self.peak / rms:.6g}}}")


def decode(members, path, originals, tallies):
    """Samples of the members; of the silent ones, which no block holds, zeros."""
    samples, rate = read_wav(path)
    channels = {name: [] for name in members}
    for block in map(Block, find_blocks(samples)):
        rebuilt = block.rebuild()
        for name, done in channels.items():
            out = rebuilt.get(name, [0] * len(block.mix))
            index = block.scaler(CHANNEL_ATTENUATION, NAMES.index(name))
            if name in originals:
                original = originals[name][len(done):len(done) + len(out)]
                original += [0] * (len(out) - len(original))
                tallies.setdefault(name, Tally()).add(
                    [(a - b) / 0x800000 for a, b in zip(attenuated(original, index), out)])
            done += amplified(out, index)
    return channels, rate


def main(arguments):
    prefix = arguments[1] if arguments[0] == "--rebuild" else None
    originals = {name: read_wav(path)[0] for name, path in (a.split("=") for a in arguments if "=" in a)}
    channels, tallies, overall = {}, {}, Tally()
    for members, path in (argument.split("@") for argument in arguments if "@" in argument):
        here, rate = decode(members.split("+"), path, originals, tallies)
        channels = here | channels  # a channel in several carriers is taken from the first
    for name in channels if prefix else ():
        write_wav(f"{prefix}{name}.wav", channels[name], rate)
    for name in sorted(tallies, key=NAMES.index):
        print(f"{name:4} {tallies[name]}")
        overall.add_channel(tallies[name])
    if tallies:
        print(f"all  {overall}")


if __name__ == "__main__":
    try:
        main(sys.argv[1:]) if len(sys.argv) > 1 else sys.exit(__doc__)
    except Damaged as damage:
        sys.exit(str(damage))

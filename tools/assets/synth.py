"""A small synthesiser: additive and FM instruments, a drum kit, reverb and a mixer.

Every note is rendered from its own start (phases, envelopes and noise depend only on the
note), so a passage rendered twice at different times gives the same samples. The music's
seamless loops rely on that.
"""
import functools
import math

import numpy as np

from audio import RATE

NYQUIST_GUARD = 16000.0


def midi_freq(m):
    return 440.0 * 2.0 ** ((m - 69) / 12.0)


def _t(n):
    return np.arange(n, dtype=np.float64) / RATE


def envelope(n, gate, attack, decay, sustain, release):
    """ADSR over n samples; the note is held for `gate` samples, then fades with time
    constant `release` (seconds). Ends in an exact zero."""
    t = _t(n)
    a = np.minimum(t / max(attack, 1e-4), 1.0)
    held = sustain + (1.0 - sustain) * np.exp(-np.maximum(t - attack, 0) / max(decay, 1e-4))
    env = a * held
    g = gate / RATE
    level = env[min(gate, n - 1)] if gate < n else env[-1]
    after = t > g
    env[after] = level * np.exp(-(t[after] - g) / max(release, 1e-4))
    fade = min(n, int(0.004 * RATE))
    env[n - fade:] *= np.linspace(1.0, 0.0, fade)
    return env


def _lowpass_gain(freq, cutoff):
    return 1.0 / np.sqrt(1.0 + (freq / cutoff) ** 4)


def _saw(phase, freq, cutoff, harmonics=40):
    """Band-limited sawtooth through a soft low-pass at `cutoff` (scalar or per sample)."""
    out = np.zeros_like(phase)
    for k in range(1, harmonics + 1):
        fk = k * freq
        if fk > NYQUIST_GUARD:
            break
        g = _lowpass_gain(fk, cutoff) / k
        if np.ndim(g) == 0 and g < 2e-4:
            break
        out += g * np.sin(2 * math.pi * k * phase)
    return out


def _length(gate, release):
    return gate + int(release * 5 * RATE)


# ---------------------------------------------------------------- instruments
# Each takes (midi note, gate in samples, velocity 0..1) and returns mono or stereo samples.

@functools.lru_cache(maxsize=None)
def bass(note, gate, vel):
    n = _length(gate, 0.05)
    t = _t(n)
    f = midi_freq(note)
    cutoff = 180.0 + 2200.0 * vel * np.exp(-t / 0.09)
    tone = _saw(f * t, f, cutoff, 48) + 0.6 * np.sin(2 * math.pi * f * t)
    return tone * envelope(n, gate, 0.004, 0.25, 0.65, 0.05) * vel


@functools.lru_cache(maxsize=None)
def pluck(note, gate, vel):
    """Square-ish pluck whose upper harmonics die first."""
    n = _length(gate, 0.12)
    t = _t(n)
    f = midi_freq(note)
    out = np.zeros(n)
    for k in range(1, 16, 2):
        if k * f > NYQUIST_GUARD:
            break
        out += np.sin(2 * math.pi * k * f * t) / k * np.exp(-t * (4.0 + 3.0 * k))
    return out * envelope(n, gate, 0.002, 0.3, 0.0, 0.12) * vel


@functools.lru_cache(maxsize=None)
def lead(note, gate, vel, bright=1.0):
    """Two detuned saws with delayed vibrato, spread in stereo."""
    n = _length(gate, 0.14)
    t = _t(n)
    f = midi_freq(note)
    vib = 1.0 + 0.012 * np.sin(2 * math.pi * 5.5 * t) * np.clip((t - 0.22) / 0.3, 0, 1)
    env = envelope(n, gate, 0.012, 0.3, 0.8, 0.14) * vel
    cutoff = (1800.0 + 2600.0 * np.exp(-t / 0.25)) * bright
    voices = []
    for cents in (-7.0, 7.0):
        fv = f * 2 ** (cents / 1200.0)
        phase = np.cumsum(fv * vib) / RATE
        voices.append(_saw(phase, fv, cutoff, 36) * env)
    return np.stack([voices[0] * 0.8 + voices[1] * 0.2, voices[0] * 0.2 + voices[1] * 0.8], axis=1)


@functools.lru_cache(maxsize=None)
def pad(notes, gate, vel):
    """Slow, wide chord of detuned saws; `notes` is a tuple of midi notes."""
    n = _length(gate, 0.7)
    t = _t(n)
    env = envelope(n, gate, 0.35, 1.0, 1.0, 0.7) * vel
    left, right = np.zeros(n), np.zeros(n)
    for i, note in enumerate(notes):
        f = midi_freq(note)
        for j, cents in enumerate((-10.0, 0.0, 10.0)):
            fv = f * 2 ** (cents / 1200.0)
            v = _saw(fv * t + 0.13 * (i + j), fv, 1400.0, 14)
            pan = (j - 1) * 0.6
            left += v * (1 - pan) * 0.5
            right += v * (1 + pan) * 0.5
    return np.stack([left, right], axis=1) * env[:, None] / len(notes)


@functools.lru_cache(maxsize=None)
def bell(note, gate, vel):
    """FM bell: bright strike, long shimmering tail."""
    n = _length(gate, 0.5) + int(0.8 * RATE)
    t = _t(n)
    f = midi_freq(note)
    index = 2.5 * np.exp(-t / 0.25) + 0.3
    tone = np.sin(2 * math.pi * f * t + index * np.sin(2 * math.pi * 3.5 * f * t))
    env = np.exp(-t / 0.9) * np.minimum(t / 0.002, 1.0)
    env[-200:] *= np.linspace(1, 0, 200)
    return tone * env * vel


@functools.lru_cache(maxsize=None)
def piano(note, gate, vel):
    """Soft electric-piano tone for the slow pieces."""
    n = _length(gate, 0.4)
    t = _t(n)
    f = midi_freq(note)
    index = 1.2 * np.exp(-t / 0.4) * vel
    tone = np.sin(2 * math.pi * f * t + index * np.sin(2 * math.pi * f * t))
    tone += 0.25 * np.sin(2 * math.pi * 2 * f * t) * np.exp(-t / 0.3)
    return tone * envelope(n, gate, 0.003, 1.2, 0.35, 0.4) * vel


# ---------------------------------------------------------------- drums

def _noise(seed, n):
    return np.random.default_rng(seed).standard_normal(n)


def band_pass(x, lo, hi):
    """Band-pass by FFT with soft edges."""
    spec = np.fft.rfft(x)
    f = np.fft.rfftfreq(len(x), 1.0 / RATE)
    gain = np.ones_like(f)
    if lo:
        gain *= 1.0 / (1.0 + (lo / np.maximum(f, 1.0)) ** 4)
    if hi:
        gain *= 1.0 / (1.0 + (f / hi) ** 4)
    return np.fft.irfft(spec * gain, len(x))


def _finish_hit(x):
    # Soft edges: a hit starts and ends without a step.
    rise, fade = int(0.0005 * RATE), int(0.003 * RATE)
    x[:rise] *= np.linspace(0, 1, rise)
    x[-fade:] *= np.linspace(1, 0, fade)
    return x


@functools.lru_cache(maxsize=None)
def drum(name):
    if name == "kick":
        n = int(0.45 * RATE)
        t = _t(n)
        f = 44.0 + 120.0 * np.exp(-t / 0.03)
        body = np.sin(2 * math.pi * np.cumsum(f) / RATE) * np.exp(-t / 0.26)
        click = band_pass(_noise(1, n), 1500, 8000) * np.exp(-t / 0.004) * 0.5
        return _finish_hit((body + click) * np.minimum(t / 0.001, 1.0))
    if name == "snare":
        n = int(0.35 * RATE)
        t = _t(n)
        tone = np.sin(2 * math.pi * 190.0 * t) * np.exp(-t / 0.05) * 0.6
        rattle = band_pass(_noise(2, n), 1200, 9000) * np.exp(-t / 0.11) * 0.55
        return _finish_hit(tone + rattle)
    if name == "hat":
        n = int(0.1 * RATE)
        t = _t(n)
        return _finish_hit(band_pass(_noise(3, n), 7000, None) * np.exp(-t / 0.025) * 0.5)
    if name == "openhat":
        n = int(0.45 * RATE)
        t = _t(n)
        return _finish_hit(band_pass(_noise(4, n), 6500, None) * np.exp(-t / 0.17) * 0.45)
    if name == "crash":
        n = int(2.2 * RATE)
        t = _t(n)
        metal = sum(np.sin(2 * math.pi * f * t) for f in (3127.0, 4411.0, 5830.0, 7213.0)) * 0.05
        return _finish_hit((band_pass(_noise(5, n), 3500, None) * 0.5 + metal) * np.exp(-t / 0.7))
    if name == "tom":
        n = int(0.45 * RATE)
        t = _t(n)
        f = 85.0 + 70.0 * np.exp(-t / 0.05)
        return _finish_hit(np.sin(2 * math.pi * np.cumsum(f) / RATE) * np.exp(-t / 0.2))
    if name == "rim":
        n = int(0.08 * RATE)
        t = _t(n)
        tone = np.sin(2 * math.pi * 1700.0 * t) * np.exp(-t / 0.008)
        return _finish_hit(tone * 0.6 + band_pass(_noise(6, n), 2000, 6000) * np.exp(-t / 0.01) * 0.4)
    raise ValueError(name)


# ---------------------------------------------------------------- mixing

def reverb(x, seconds=1.6, seed=7):
    """Stereo convolution with decaying, darkening noise: a hall behind the mix.

    The hall holds nothing above 5 kHz, so it is computed at half the sample rate."""
    half = RATE // 2
    n = int(seconds * half)
    t = np.arange(n) / half
    rng = np.random.default_rng(seed)
    ir = np.zeros((n, 2))
    for ch in range(2):
        spec = np.fft.rfft(rng.standard_normal(n))
        f = np.fft.rfftfreq(n, 1.0 / half)
        spec *= 1.0 / (1.0 + (120.0 / np.maximum(f, 1.0)) ** 4) / (1.0 + (f / 5000.0) ** 4)
        ir[:, ch] = np.fft.irfft(spec, n) * np.exp(-t * 6.9 / seconds)
    ir[: int(0.012 * half)] = 0.0
    ir /= np.sqrt((ir ** 2).sum(axis=0))
    m = len(x) // 2
    low = 0.5 * (x[0:2 * m:2] + x[1:2 * m:2])
    size = 1 << int(math.ceil(math.log2(m + n)))
    wet = np.zeros((m, 2))
    for ch in range(2):
        spec = np.fft.rfft(low[:, ch], size) * np.fft.rfft(ir[:, ch], size)
        wet[:, ch] = np.fft.irfft(spec, size)[:m]
    # Back to the full rate by linear interpolation.
    out = np.zeros_like(x)
    out[0:2 * m:2] = wet
    out[1:2 * m - 1:2] = 0.5 * (wet[:-1] + wet[1:])
    out[2 * m - 1] = wet[-1]
    return out


class Mix:
    """A stereo buffer with a reverb send, addressed in beats from section offsets."""

    def __init__(self, bpm, length):
        self.spb = RATE * 60.0 / bpm
        self.dry = np.zeros((length, 2))
        self.wet = np.zeros((length, 2))

    def at(self, offset, beat):
        return offset + int(round(beat * self.spb))

    def beats(self, count):
        return int(round(count * self.spb))

    def add(self, start, sig, gain=1.0, pan=0.0, send=0.15):
        if sig.ndim == 1:
            sig = np.stack([sig * math.sqrt(0.5 * (1 - pan)), sig * math.sqrt(0.5 * (1 + pan))],
                           axis=1) * math.sqrt(2.0)
        end = min(len(self.dry), start + len(sig))
        if end <= start:
            return
        part = sig[: end - start] * gain
        self.dry[start:end] += part
        self.wet[start:end] += part * send

    def render(self, room=1.6):
        return self.dry + reverb(self.wet, room)

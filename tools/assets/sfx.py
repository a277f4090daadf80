"""Sound effects: short mono sounds synthesised from oscillators and filtered noise."""
import math
import os

import numpy as np

import audio
from audio import RATE
from synth import band_pass

QUALITY = 5


def _t(seconds):
    return np.arange(int(seconds * RATE)) / RATE


def _edges(x, rise=0.001, fall=0.01):
    r, f = int(rise * RATE), int(fall * RATE)
    x[:r] *= np.linspace(0, 1, r)
    x[-f:] *= np.linspace(1, 0, f)
    return x


def _strike(t, decay):
    """A struck note's envelope: a 2 ms rise (no click), then a fall."""
    return np.minimum(t / 0.002, 1.0) * np.exp(-t / decay)


def _square(phase, harmonics=12):
    out = np.zeros_like(phase)
    for k in range(1, 2 * harmonics, 2):
        out += np.sin(2 * math.pi * k * phase) / k
    return out


def laser():
    """A bright 'pew' sliding down from a high pitch."""
    t = _t(0.2)
    f = 320 + 1700 * np.exp(-t / 0.035)
    phase = np.cumsum(f) / RATE
    tone = _square(phase, 8) * 0.6 + np.sin(2 * math.pi * phase * 2.01) * 0.3
    zap = band_pass(np.random.default_rng(51).standard_normal(len(t)), 2500, 9000) * np.exp(-t / 0.01)
    return _edges((tone * np.exp(-t / 0.06) + zap * 0.25), 0.0005, 0.02)


def explosion():
    """A thump under a crackling roar that darkens as it dies."""
    t = _t(1.3)
    rng = np.random.default_rng(52)
    noise = rng.standard_normal(len(t))
    low = band_pass(noise, 30, 250) * np.exp(-t / 0.5) * 1.4
    mid = band_pass(noise, 250, 1800) * np.exp(-t / 0.22)
    high = band_pass(noise, 1800, 8000) * np.exp(-t / 0.05) * 0.6
    f = 38 + 70 * np.exp(-t / 0.08)
    thump = np.sin(2 * math.pi * np.cumsum(f) / RATE) * np.exp(-t / 0.3) * 1.2
    crackle = np.zeros(len(t))
    for _ in range(40):
        at = int(rng.random() ** 1.8 * 0.7 * RATE)
        n = min(200, len(t) - at)
        crackle[at:at + n] += rng.standard_normal(n) * np.exp(-np.arange(n) / 30.0) * (1 - at / len(t))
    return _edges(low + mid + high + thump + band_pass(crackle, 1000, 7000) * 0.5, 0.0005, 0.08)


def ping():
    """The bonus counter's tick: a tiny bell, short enough to repeat every 50 ms."""
    t = _t(0.09)
    tone = (np.sin(2 * math.pi * 1975.5 * t) + 0.5 * np.sin(2 * math.pi * 2963.3 * t)
            + 0.25 * np.sin(2 * math.pi * 5270.0 * t) * np.exp(-t / 0.01))
    return _edges(tone * np.exp(-t / 0.025), 0.0005, 0.01)


def extra():
    """Power-up: a quick rising arpeggio with a sparkle on top."""
    total = _t(0.5)
    out = np.zeros(len(total))
    for i, midi in enumerate((72, 76, 79, 84)):
        start = int(i * 0.05 * RATE)
        t = _t(0.5 - i * 0.05)
        f = 440 * 2 ** ((midi - 69) / 12)
        note = (_square(f * t, 5) * 0.5 + np.sin(2 * math.pi * 2 * f * t) * 0.3) * _strike(t, 0.09)
        out[start:start + len(note)] += note * (0.7 + 0.1 * i)
    shimmer = np.sin(2 * math.pi * 4186 * total) * np.sin(2 * math.pi * 23 * total) ** 2
    out += shimmer * np.exp(-np.abs(total - 0.2) / 0.08) * 0.25
    return _edges(out, 0.0005, 0.05)


def timewarp():
    """Time bends: a chord slides down and slows its pulse while a whoosh falls away."""
    t = _t(1.6)
    bend = 2 ** (-1.5 * (1 - np.exp(-t / 0.6)))
    out = np.zeros(len(t))
    for ratio in (1.0, 1.26, 1.5, 2.0):
        phase = np.cumsum(440 * ratio * bend) / RATE
        out += np.sin(2 * math.pi * phase) + 0.3 * np.sin(2 * math.pi * 3 * phase)
    wobble = 0.6 + 0.4 * np.sin(2 * math.pi * np.cumsum(14 * bend ** 3) / RATE)
    noise = band_pass(np.random.default_rng(53).standard_normal(len(t)), 300, 3000)
    whoosh = noise * np.exp(-((t - 0.25) / 0.25) ** 2) * 0.8
    env = np.minimum(t / 0.03, 1) * np.exp(-t / 0.7)
    return _edges(out * wobble * env * 0.3 + whoosh, 0.002, 0.1)


def menu_move():
    t = _t(0.05)
    f = 880 + 440 * t / 0.05
    return _edges(np.sin(2 * math.pi * np.cumsum(f) / RATE) * np.exp(-t / 0.018), 0.001, 0.01)


def menu_click():
    out = np.zeros(int(0.13 * RATE))
    for i, f in enumerate((1046.5, 1568.0)):
        t = _t(0.08)
        start = int(i * 0.045 * RATE)
        tone = (np.sin(2 * math.pi * f * t) + 0.3 * np.sin(2 * math.pi * 2 * f * t)) * _strike(t, 0.03)
        out[start:start + len(t)] += tone
    return _edges(out, 0.001, 0.01)


# name -> (sound, peak level, priority in the source pools: higher wins a busy pool)
EFFECTS = {
    "explosion": (explosion, 0.9, 3),
    "laser": (laser, 0.55, 1),
    "ping": (ping, 0.5, 2),
    "extra": (extra, 0.7, 4),
    "timewarp": (timewarp, 0.8, 5),
    "menu_move": (menu_move, 0.45, 1),
    "menu_click": (menu_click, 0.6, 2),
}


def build(out_dir):
    """Writes every effect; returns (name, file name, priority) for the sound bank."""
    os.makedirs(out_dir, exist_ok=True)
    entries = []
    for name, (make, peak, priority) in EFFECTS.items():
        x = make()
        x = x * (peak / np.abs(x).max())
        audio.encode_ogg(os.path.join(out_dir, name + ".ogg"), x, QUALITY)
        entries.append((name, name + ".ogg", priority))
    return entries

"""Audio output: 16-bit WAV, Ogg Vorbis through oggenc, and the loudness measure the music
is levelled with."""
import os
import subprocess
import tempfile
import wave

import numpy as np

RATE = 44100
# oggenc picks a random stream serial number unless told; a fixed one keeps files identical.
SERIAL = 20240611


def to_pcm16(x):
    return np.clip(np.round(x * 32767.0), -32768, 32767).astype("<i2")


def write_wav(path, x):
    """x: samples (n,) for mono or (n, 2) for stereo, floats in -1..1."""
    channels = 1 if x.ndim == 1 else x.shape[1]
    with wave.open(path, "wb") as w:
        w.setnchannels(channels)
        w.setsampwidth(2)
        w.setframerate(RATE)
        w.writeframes(to_pcm16(x).tobytes())


def read_wav(path):
    with wave.open(path, "rb") as w:
        data = np.frombuffer(w.readframes(w.getnframes()), "<i2").astype(np.float32) / 32768.0
        channels = w.getnchannels()
    return data.reshape(-1, channels) if channels > 1 else data


def encode_ogg(path, x, quality):
    with tempfile.TemporaryDirectory() as tmp:
        wav = os.path.join(tmp, "in.wav")
        write_wav(wav, x)
        subprocess.run(["oggenc", "-Q", "-q", str(quality), "--serial", str(SERIAL), "-o", path, wav],
                       check=True)


def decode_ogg(path):
    with tempfile.TemporaryDirectory() as tmp:
        wav = os.path.join(tmp, "out.wav")
        subprocess.run(["oggdec", "-Q", "-o", wav, path], check=True)
        return read_wav(wav)


def loudness(x, block=0.4, gate_db=-50.0):
    """RMS level in dB of full scale over 400 ms blocks, ignoring near-silent blocks, so that a
    piece with a quiet ending is judged by what is heard."""
    mono = x.mean(axis=1) if x.ndim > 1 else x
    n = int(RATE * block)
    count = max(1, len(mono) // n)
    blocks = mono[:count * n].reshape(count, n) if len(mono) >= n else mono[None, :]
    power = (blocks.astype(np.float64) ** 2).mean(axis=1)
    db = 10 * np.log10(np.maximum(power, 1e-12))
    kept = power[db > gate_db]
    return float(10 * np.log10(max(kept.mean(), 1e-12))) if len(kept) else -120.0

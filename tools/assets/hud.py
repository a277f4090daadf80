"""The ship's instrument ring, drawn additively by the game: "full" dimly as a backdrop, the
current values brightly on top of it. Every piece shares one size and one hot spot, so the
pieces fall into place over "full".

Layout: the shield gauge is the left arc (the game shows its upper rows, so it empties from
the bottom up), speed the right arc (filling upwards), the weapon fan in the middle (one beam
per laser type), fire rate as pips under the fan and stored time warps as hourglasses below.
"""
import math

import numpy as np
from PIL import Image, ImageDraw

import render as R
from render import SS

SIZE = 96
# Drawn at a point, an image's lower edge lands hotY above it: -48 centres the ring on the
# game's HUD position.
HOTSPOT = (SIZE // 2, -SIZE // 2)

SHIELD = (0.3, 0.85, 1.0)
SPEED = (1.0, 0.8, 0.2)
WEAPON = (0.4, 1.0, 0.45)
RATE = (1.0, 0.5, 0.2)
WARP = (0.9, 0.45, 1.0)

C = SIZE / 2.0
OUTER, INNER = 45.0, 38.5


def _canvas():
    n = SIZE * SS
    im = Image.new("L", (n, n), 0)
    return im, ImageDraw.Draw(im)


def _p(x, y):
    return (x * SS, y * SS)


def _arc_cell(d, a0, a1):
    """A ring segment between angles a0 and a1 (degrees, y down)."""
    steps = 12
    outer = [(C + OUTER * math.cos(math.radians(a0 + (a1 - a0) * k / steps)),
              C + OUTER * math.sin(math.radians(a0 + (a1 - a0) * k / steps))) for k in range(steps + 1)]
    inner = [(C + INNER * math.cos(math.radians(a1 - (a1 - a0) * k / steps)),
              C + INNER * math.sin(math.radians(a1 - (a1 - a0) * k / steps))) for k in range(steps + 1)]
    d.polygon([_p(x, y) for x, y in outer + inner], fill=255)


def _shield_cells(d, count=10):
    span0, span1 = 105.0, 255.0
    step = (span1 - span0) / count
    for k in range(count):
        _arc_cell(d, span0 + k * step + 1.2, span0 + (k + 1) * step - 1.2)


def _speed_cells(d, lit):
    # From the bottom (75 degrees) up to the top (-75 degrees).
    step = 150.0 / 5
    for k in range(lit):
        a1 = 75.0 - k * step
        _arc_cell(d, a1 - step + 1.8, a1 - 1.8)


# Beams lit for each laser type: always some of the five places of the full fan.
FANS = {1: [0], 2: [-1, 1], 3: [-1, 0, 1], 4: [-2, -1, 1, 2], 5: [-2, -1, 0, 1, 2]}


def _beams(d, count):
    """One beam per laser type, fanning out from the emitter."""
    base = (C, 62.0)
    spread = 17.0
    for k in FANS[count]:
        a = math.radians(-90 + k * spread)
        start = (base[0] + 7 * math.cos(a), base[1] + 7 * math.sin(a))
        tip = (base[0] + 29 * math.cos(a), base[1] + 29 * math.sin(a))
        d.line([_p(*start), _p(*tip)], fill=255, width=int(2.2 * SS))
        d.ellipse((*_p(tip[0] - 1.9, tip[1] - 1.9), *_p(tip[0] + 1.9, tip[1] + 1.9)), fill=255)
    d.pieslice((*_p(C - 5, 57), *_p(C + 5, 67)), 180, 360, fill=255)


def _pips(d, count):
    for k in range(count):
        x = C + (k - 2) * 7.0
        d.rounded_rectangle((*_p(x - 2.4, 68), *_p(x + 2.4, 72.5)), radius=SS, fill=255)


def _hourglasses(d, count):
    for k in range(count):
        x = C + (k - 0.5) * 13.0
        d.polygon([_p(x - 4, 77), _p(x + 4, 77), _p(x + 0.8, 82), _p(x + 4, 87), _p(x - 4, 87),
                   _p(x - 0.8, 82)], fill=255)


def _frame(d):
    # Thin rings outside and inside the gauges, and end caps, visible only in "full".
    d.ellipse((*_p(C - 47.2, C - 47.2), *_p(C + 47.2, C + 47.2)), outline=255, width=int(0.8 * SS))
    d.ellipse((*_p(C - 36.2, C - 36.2), *_p(C + 36.2, C + 36.2)), outline=255, width=int(0.6 * SS))


def _glow(mask, color, halo=1.0):
    col = np.asarray(color, np.float32)
    return mask[..., None] * (col * 0.75 + 0.25) + R.blur(mask, 1.6 * SS)[..., None] * col * 0.9 * halo


def _image(*layers):
    lum = np.zeros((SIZE * SS, SIZE * SS, 3), np.float32)
    for draw, color in layers:
        im, d = _canvas()
        draw(d)
        lum += _glow(R.to_float(im), color)
    return R.finish_glow(lum)


def hud_images():
    """Name -> RGBA of every HUD image."""
    out = {}
    out["full"] = _image((_shield_cells, SHIELD), (lambda d: _speed_cells(d, 5), SPEED),
                         (lambda d: _beams(d, 5), WEAPON), (lambda d: _pips(d, 5), RATE),
                         (lambda d: _hourglasses(d, 2), WARP), (_frame, (0.5, 0.7, 1.0)))
    out["shield"] = _image((_shield_cells, SHIELD))
    for n in range(1, 6):
        out["speed_%d" % n] = _image((lambda d, n=n: _speed_cells(d, n), SPEED))
    for n in range(1, 6):
        for m in range(0, 6):
            out["fire_%d_%d" % (n, m)] = _image((lambda d, n=n: _beams(d, n), WEAPON),
                                               (lambda d, m=m: _pips(d, m), RATE))
    for n in range(1, 3):
        out["timewarp_%d" % n] = _image((lambda d, n=n: _hourglasses(d, n), WARP))
    return out

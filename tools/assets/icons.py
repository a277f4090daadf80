#!/usr/bin/python3
"""Draws the desktop icon (the window icon's ship on its round badge) at the sizes of the
hicolor icon theme.

    tools/assets/icons.py [--out DIR]      # default: packaging/icons/

Writes DIR/vantorix-N.png for every N in SIZES. The ship is modelled once at the largest
size and filtered down, so small icons stay as crisp as the 32 pixel window icon.
"""
import argparse
import importlib
import os
import sys

import numpy as np
from PIL import Image

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)

import render as R  # noqa: E402

SIZES = (16, 32, 48, 64, 128, 256, 512)
BADGE_SS = 4


def big_ship(size):
    """The first player's ship, `size` pixels square: the models are laid out in pixels of a
    64 pixel sprite and drawn at render.SS times that, so a larger SS draws a larger ship."""
    R.SS = size // 16
    import model
    import ships
    importlib.reload(model)
    importlib.reload(ships)
    return ships.player1().render()


def badge(n):
    """The window icon's round badge, with its radii scaled from 32 pixels to `n`."""
    s = n / 32.0
    rho, _ = R.radial(n * BADGE_SS, n * BADGE_SS, n * BADGE_SS / 2, n * BADGE_SS / 2)
    disc = (rho < 15.5 * s * BADGE_SS).astype(np.float32)
    ring = ((rho > 13.8 * s * BADGE_SS) & (rho < 15.5 * s * BADGE_SS))[..., None]
    ys = (np.mgrid[0:n * BADGE_SS, 0:n * BADGE_SS][0] / (n * BADGE_SS))[..., None]
    rgb = np.array([0.05, 0.08, 0.2]) * (1 - ys) + np.array([0.01, 0.02, 0.06]) * ys
    rgb = np.where(ring, np.array([0.35, 0.7, 1.0]), rgb)
    return R.finish(rgb.astype(np.float32), disc, BADGE_SS)


def scaled(rgba, n):
    """Resizes with premultiplied alpha, so the transparent surround adds no dark fringe."""
    f = rgba.astype(np.float32) / 255.0
    prem = np.dstack([f[..., :3] * f[..., 3:], f[..., 3:]])
    channels = [np.asarray(Image.fromarray(prem[..., i]).resize((n, n), Image.LANCZOS))
                for i in range(4)]
    out = np.clip(np.dstack(channels), 0.0, 1.0)
    return R.quantize(out[..., :3] / np.maximum(out[..., 3:], 1e-6), out[..., 3])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out", default=os.path.join(HERE, "..", "..", "packaging", "icons"))
    args = parser.parse_args()
    os.makedirs(args.out, exist_ok=True)
    ship = big_ship(max(SIZES))
    for n in SIZES:
        icon = R.over(ship if n == max(SIZES) else scaled(ship, n), badge(n))
        R.save(icon, os.path.join(args.out, "vantorix-%d.png" % n))


if __name__ == "__main__":
    main()

"""Light effects: engine flames, the shield, lasers and explosions.

All of these are glows: they are drawn additively or over dark space, so they are made as
emitted light and turned into RGBA with render.finish_glow.
"""
import math

import numpy as np

import render as R
from render import SS

FLAME_W, FLAME_H = 16, 40
FLAME_TOP = 3  # the flame starts a little inside its image, so no edge of it shows
# The flame hangs below the ship's nozzle, which ends 24 pixels below the ship centre.
FLAME_HOT = (FLAME_W // 2, -24 + FLAME_TOP)
SHIELD_SIZE = 80


def _grid(w, h):
    ys, xs = np.mgrid[0:h * SS, 0:w * SS].astype(np.float32)
    return (xs + 0.5) / SS, (ys + 0.5) / SS


def _flame(length, width, wobble, colors, r, intensity=1.0):
    xs, ys = _grid(FLAME_W, FLAME_H)
    ys = ys - FLAME_TOP
    t = ys / max(length, 1e-3)
    sway = wobble * np.sin(ys * 0.45 + r.random() * 6.28) * np.clip(t, 0, 1)
    across = xs - FLAME_W / 2.0 - sway
    half = width * (1.0 - 0.75 * np.clip(t, 0, 1)) ** 0.8 + 0.25
    # Inside the nozzle (t < 0) the flame fades in over a pixel or two.
    start = np.exp(-(np.clip(-ys, 0, None) / 1.2) ** 2)
    body = np.exp(-(across / half) ** 2) * np.exp(-np.clip(t, 0, None) ** 2.2 * 2.6) * start
    core = np.exp(-(across / (half * 0.45)) ** 2) * np.exp(-np.clip(t, 0, None) ** 1.6 * 7.0) * start
    inner, outer = colors
    lum = body[..., None] * np.asarray(outer) + core[..., None] * np.asarray(inner)
    return lum * intensity


ENGINE_COLORS = ((0.9, 0.95, 1.0), (0.25, 0.5, 1.0))
STUTTER_COLORS = ((1.0, 0.85, 0.5), (1.0, 0.3, 0.05))


def engine_frames():
    r = R.rng(11)
    frames = []
    for i in range(8):
        length = 21 + 6 * (0.5 + 0.5 * math.sin(i * 2 * math.pi / 8)) + r.random() * 3
        frames.append(R.finish_glow(_flame(length, 3.4 + r.random() * 0.5, 0.5, ENGINE_COLORS, r)))
    return frames


def stutter_frames():
    """A damaged engine: it coughs, dies and spits sparks."""
    r = R.rng(12)
    lengths = [16, 4, 0, 9, 20, 6, 0, 0, 12, 3, 18, 8]
    frames = []
    for length in lengths:
        lum = np.zeros((FLAME_H * SS, FLAME_W * SS, 3), np.float32)
        if length > 0:
            lum += _flame(length, 2.6 + r.random(), 1.2, STUTTER_COLORS, r, 0.9)
        else:
            lum += _flame(3, 1.6, 0.0, STUTTER_COLORS, r, 0.5)
        xs, ys = _grid(FLAME_W, FLAME_H)
        for _ in range(int(r.integers(1, 4))):
            sx = FLAME_W / 2 + r.normal(0, 1.8)
            sy = FLAME_TOP + 3 + r.random() * 20
            d2 = (xs - sx) ** 2 + (ys - sy) ** 2
            lum += np.exp(-d2 / 0.35)[..., None] * np.array([1.0, 0.7, 0.3]) * 0.9
        frames.append(R.finish_glow(lum))
    return frames


def _hex_lines(x, y, cell):
    """Closeness (1 on the lines) to the edges of a hexagonal grid of cell size `cell`."""
    q = (x * math.sqrt(3) / 3 - y / 3) / cell
    rr = (y * 2 / 3) / cell
    cx, cz = q, rr
    cy = -cx - cz
    rx, ry, rz = np.round(cx), np.round(cy), np.round(cz)
    dx, dy, dz = np.abs(rx - cx), np.abs(ry - cy), np.abs(rz - cz)
    fix_x = (dx > dy) & (dx > dz)
    fix_y = ~fix_x & (dy > dz)
    rx = np.where(fix_x, -ry - rz, rx)
    ry = np.where(fix_y, -rx - rz, ry)
    rz = -rx - ry
    a, b, c = cx - rx, cy - ry, cz - rz
    # 0 at the cell's centre, 1 on its edges.
    d = np.maximum.reduce([np.abs(a - b), np.abs(b - c), np.abs(c - a)])
    return np.clip((d - 0.8) / 0.2, 0, 1) ** 2


def shield_frames():
    n = 12
    size = SHIELD_SIZE
    radius = size / 2.0 - 2.5
    xs, ys = _grid(size, size)
    dx, dy = xs - size / 2.0, ys - size / 2.0
    rho = np.hypot(dx, dy)
    q = np.clip(rho / radius, 0, 1)
    inside = (rho < radius).astype(np.float32)
    edge = R.smoothstep(radius + 0.8, radius - 0.8, rho)
    # Features near the limb of a sphere crowd together.
    warp = np.where(q > 1e-4, np.arcsin(np.clip(q, 0, 0.999)) / np.maximum(q, 1e-4), 1.0)
    hexes = _hex_lines(dx * warp, dy * warp, 8.0)
    angle = np.arctan2(dy, dx)
    fresnel = q ** 6
    frames = []
    for i in range(n):
        phase = i * 2 * math.pi / n
        sweep = 0.5 + 0.5 * np.cos(angle - phase)
        sweep = sweep ** 6
        pulse = 0.75 + 0.25 * math.cos(phase * 2)
        ring = np.exp(-((rho - radius + 1.3) / 1.4) ** 2)
        lum = (np.array([0.1, 0.45, 1.0]) * (0.05 + 0.55 * fresnel)[..., None]
               + np.array([0.3, 0.8, 1.0]) * (hexes * (0.05 + 0.6 * sweep) * (0.2 + q))[..., None]
               + np.array([0.5, 0.9, 1.0]) * (ring * pulse * 0.9)[..., None])
        highlight = np.exp(-(((dx + 13) / 9) ** 2 + ((dy + 15) / 5) ** 2)) * 0.35
        lum = (lum + highlight[..., None]) * edge[..., None]
        frames.append(R.finish_glow(lum, floor=R.downsample(inside * edge) * 0.6))
    return frames


# ---------------------------------------------------------------- lasers

def laser_ray(inner, outer, w=8, h=28):
    xs, ys = _grid(w, h)
    dx = xs - w / 2.0
    half = h / 2.0 - 3.0
    dy = np.clip(np.abs(ys - h / 2.0) - half, 0, None)
    core = np.exp(-((dx / 1.0) ** 2 + (dy / 1.2) ** 2))
    halo = np.exp(-((dx / 2.6) ** 2 + (dy / 2.4) ** 2))
    lum = core[..., None] * np.asarray(inner) + halo[..., None] * np.asarray(outer) * 0.8
    return R.finish_glow(lum)


def laser_round(inner, outer, size=14):
    xs, ys = _grid(size, size)
    d = np.hypot(xs - size / 2.0, ys - size / 2.0)
    core = R.smoothstep(2.6, 1.4, d)
    halo = np.exp(-(d / 3.6) ** 2)
    lum = core[..., None] * np.asarray(inner) + halo[..., None] * np.asarray(outer)
    return R.finish_glow(lum)


# ---------------------------------------------------------------- explosions

FIRE = [(0.0, (0.0, 0.0, 0.0)), (0.12, (0.3, 0.02, 0.0)), (0.35, (0.85, 0.2, 0.02)),
        (0.6, (1.0, 0.55, 0.08)), (0.8, (1.0, 0.85, 0.4)), (1.0, (1.0, 1.0, 0.92))]


def _window(shape, cx, cy, reach):
    """Slices of the supersampled canvas that hold everything within `reach` of (cx, cy)."""
    h, w = shape
    x0, x1 = int(max(0, (cx - reach) * SS)), int(min(w, (cx + reach) * SS + 1))
    y0, y1 = int(max(0, (cy - reach) * SS)), int(min(h, (cy + reach) * SS + 1))
    return slice(y0, max(y0, y1)), slice(x0, max(x0, x1))


def _fireball(lum, xs, ys, cx, cy, radius, t, tex_a, tex_b):
    """Adds one expanding, cooling ball of fire at time t (0..1) of its own life."""
    if t <= 0 or t >= 1 or radius <= 0:
        return
    size = radius * (1.0 - (1.0 - t) ** 3) + 0.5
    win = _window(xs.shape, cx, cy, size * 1.3)
    dx, dy = xs[win] - cx, ys[win] - cy
    rho = np.hypot(dx, dy)
    th, tw = tex_a.shape
    # The pattern grows with the ball and drifts slowly, so frames follow each other smoothly.
    u = (dx / size) * tw * 0.38 + tw / 2 + t * 9.0
    v = (dy / size) * th * 0.38 + th / 2 - t * 6.0
    na = R.sample(tex_a, u, v)
    nb = R.sample(tex_b, u * 0.9 + 5, v * 0.9 + 3)
    q = rho / size
    density = R.smoothstep(1.05, 0.4, q + 0.55 * (na - 0.5))
    # Later the ball breaks up into wisps.
    density *= R.smoothstep(t * 1.3 - 0.4, t * 1.3 + 0.02, nb)
    heat = density * ((1.0 - t) ** 0.75) * (1.2 - 0.6 * q) * (0.7 + 0.6 * nb)
    flash = np.exp(-(rho / (size * 0.55)) ** 2) * max(0.0, 1.0 - t * 4.0)
    lum[win] += R.ramp(heat, FIRE) + flash[..., None] * np.array([1.0, 0.95, 0.85])


def _sparks(lum, xs, ys, cx, cy, reach, t, r, count, color):
    for _ in range(count):
        a = r.random() * 2 * math.pi
        v = 0.55 + 0.6 * r.random()
        bright = 0.6 + 0.4 * r.random()
        travel = reach * v * (1.0 - (1.0 - t) ** 2)
        px, py = cx + math.cos(a) * travel, cy + math.sin(a) * travel
        tail = 2.0 + 5.0 * v * (1.0 - t)
        fade = (1.0 - t) ** 2.0 * bright
        win = _window(xs.shape, px, py, tail + 2.0)
        # Distance to the streak that runs from the spark back along its path.
        ux, uy = math.cos(a), math.sin(a)
        rx, ry = xs[win] - px, ys[win] - py
        along = np.clip(-(rx * ux + ry * uy), 0, tail)
        ex, ey = rx + along * ux, ry + along * uy
        lum[win] += (np.exp(-(ex * ex + ey * ey) / 0.3) * fade)[..., None] * np.asarray(color)


def explosion_frames(size, count, seed, blasts, shock):
    """`blasts`: (x, y, radius, start, life) of each fireball, positions relative to the centre,
    times as fractions of the whole animation."""
    r = R.rng(seed)
    xs, ys = _grid(size, size)
    c = size / 2.0
    tex = [R.noise(r, 128, 128, 4, octaves=4, persistence=0.55) for _ in range(2)]
    sparks_seed = int(r.integers(1 << 30))
    frames = []
    for i in range(count):
        t = (i + 0.5) / count
        lum = np.zeros(xs.shape + (3,), np.float32)
        for bx, by, radius, start, life in blasts:
            _fireball(lum, xs, ys, c + bx, c + by, radius, (t - start) / life, tex[0], tex[1])
        _sparks(lum, xs, ys, c, c, size * 0.46, t, R.rng(sparks_seed), 14 if size < 100 else 24,
                (1.0, 0.8, 0.45))
        if shock and t < 0.45:
            rho = np.hypot(xs - c, ys - c)
            ts = t / 0.45
            ring = np.exp(-((rho - size * 0.48 * ts ** 0.6) / (0.8 + 2.5 * ts)) ** 2)
            lum += (ring * (1.0 - ts) ** 2 * 1.1)[..., None] * np.array([0.55, 0.75, 1.0])
        frames.append(R.finish_glow(lum))
    return frames


def explosion_fast():
    blasts = [(0, 0, 24, 0.0, 0.95), (5, -4, 14, 0.1, 0.7), (-6, 5, 12, 0.18, 0.65)]
    return explosion_frames(64, 12, 21, blasts, shock=False)


def explosion_slow():
    blasts = [(0, 0, 40, 0.0, 0.8), (-14, -9, 24, 0.12, 0.6), (13, 11, 26, 0.2, 0.62),
              (10, -15, 18, 0.32, 0.55), (-12, 14, 20, 0.42, 0.5)]
    return explosion_frames(128, 24, 22, blasts, shock=True)

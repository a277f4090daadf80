"""Shared drawing helpers: supersampled masks, height-field lighting, glows and PNG output.

Everything is drawn at SS times the final size and box-filtered down, which gives clean
anti-aliased edges. Coordinates are pixels with x to the right and y downwards.
"""
import math

import numpy as np
from PIL import Image, ImageDraw

SS = 4

# Key light from the upper left, slightly in front: the one light every sprite shares.
LIGHT = np.array([-0.45, -0.6, 0.66])
LIGHT = LIGHT / np.linalg.norm(LIGHT)
HALFWAY = LIGHT + np.array([0.0, 0.0, 1.0])
HALFWAY = HALFWAY / np.linalg.norm(HALFWAY)
KEY_COLOR = np.array([1.0, 0.96, 0.9])
AMBIENT_COLOR = np.array([0.22, 0.25, 0.32])
# A cool light from below and behind outlines dark hulls against space.
RIM_COLOR = np.array([0.25, 0.45, 0.8])


def rng(seed):
    return np.random.default_rng(seed)


# ---------------------------------------------------------------- masks

def new_mask(w, h):
    """A blank 8-bit canvas and its drawer, at supersampled size."""
    im = Image.new("L", (w, h), 0)
    return im, ImageDraw.Draw(im)


def to_float(im):
    return np.asarray(im, dtype=np.float32) / 255.0


def ellipse(w, h, box):
    im, d = new_mask(w, h)
    d.ellipse(box, fill=255)
    return to_float(im)


def mirror_x(points):
    """Right-half outline (x >= 0, listed top to bottom) completed with its mirror image."""
    return list(points) + [(-x, y) for x, y in reversed(points)]


# ---------------------------------------------------------------- filters

def _box_rows(a, r):
    """Box filter of radius r down the first axis, zero beyond the ends."""
    n = a.shape[0]
    c = np.zeros((n + 2 * r + 2,) + a.shape[1:], np.float64)
    np.cumsum(a, axis=0, out=c[r + 1:n + r + 1])
    c[n + r + 1:] = c[n + r]
    return ((c[2 * r + 1:2 * r + 1 + n] - c[:n]) * (1.0 / (2 * r + 1))).astype(np.float32)


def blur(a, sigma):
    """Near-Gaussian blur (three box passes per axis); zero outside the array."""
    if sigma <= 0:
        return a.astype(np.float32)
    r = max(1, int(round(math.sqrt(12.0 * sigma * sigma / 3.0 + 1.0) / 2.0)))
    out = a.astype(np.float32)
    for _ in range(3):
        out = _box_rows(out, r)
    out = np.ascontiguousarray(out.T)
    for _ in range(3):
        out = _box_rows(out, r)
    return np.ascontiguousarray(out.T)


def smoothstep(e0, e1, x):
    t = np.clip((x - e0) / (e1 - e0), 0.0, 1.0)
    return t * t * (3.0 - 2.0 * t)


def bevel(mask, width):
    """Height rising from 0 at the outline to 1 inside, over about `width` pixels."""
    b = blur(mask, width * 0.5)
    return smoothstep(0.5, 1.0, b) * mask


def noise(r, h, w, cells, octaves=4, persistence=0.5):
    """Fractal value noise in [0, 1], deterministic for the generator `r`."""
    total = np.zeros((h, w), np.float32)
    amp, norm = 1.0, 0.0
    for o in range(octaves):
        n = cells * (2 ** o)
        grid = r.random((n + 1, n + 1)).astype(np.float32)
        total += amp * np.asarray(Image.fromarray(grid, "F").resize((w, h), Image.BICUBIC))
        norm += amp
        amp *= persistence
    total /= norm
    lo, hi = float(total.min()), float(total.max())
    return (total - lo) / max(hi - lo, 1e-6)


def sample(tex, xs, ys):
    """Bilinear lookup of a 2D (or 2D x channels) texture at float coordinates, clamped."""
    h, w = tex.shape[:2]
    xs = np.clip(xs, 0, w - 1.001)
    ys = np.clip(ys, 0, h - 1.001)
    x0 = np.floor(xs).astype(np.int32)
    y0 = np.floor(ys).astype(np.int32)
    fx = xs - x0
    fy = ys - y0
    if tex.ndim == 3:
        fx = fx[..., None]
        fy = fy[..., None]
    a = tex[y0, x0]
    b = tex[y0, x0 + 1]
    c = tex[y0 + 1, x0]
    d = tex[y0 + 1, x0 + 1]
    return (a * (1 - fx) + b * fx) * (1 - fy) + (c * (1 - fx) + d * fx) * fy


def rotate(tex, angle, cx, cy):
    """`tex` turned by `angle` radians (clockwise on screen) about (cx, cy)."""
    h, w = tex.shape[:2]
    ys, xs = np.mgrid[0:h, 0:w].astype(np.float32)
    c, s = math.cos(angle), math.sin(angle)
    dx, dy = xs - cx, ys - cy
    return sample(tex, cx + c * dx + s * dy, cy - s * dx + c * dy)


# ---------------------------------------------------------------- lighting

def normals(height, strength=1.0):
    gy, gx = np.gradient(height * strength)
    n = np.stack([-gx, -gy, np.ones_like(height)], axis=-1)
    return n / np.linalg.norm(n, axis=-1, keepdims=True)


def light(n, albedo, spec=0.4, shininess=24.0, ambient=1.0, rim=1.0, emissive=None):
    """Colour of a surface with normals `n` under the shared lights (straight RGB)."""
    diffuse = np.clip(n @ LIGHT, 0.0, None)[..., None]
    col = albedo * (AMBIENT_COLOR * ambient + diffuse * KEY_COLOR)
    if np.ndim(spec) == 2:
        spec = spec[..., None]
    col = col + spec * np.clip(n @ HALFWAY, 0.0, None)[..., None] ** shininess
    # Rim: surfaces turned away from the viewer towards the lower right catch the cool light.
    facing = np.clip(n[..., 0] * 0.5 + n[..., 1] * 0.7, 0.0, None)
    col = col + rim * RIM_COLOR * ((1.0 - n[..., 2]) ** 1.5 * facing)[..., None]
    if emissive is not None:
        col = col + emissive
    return col


# ---------------------------------------------------------------- output

def downsample(a, ss=SS):
    h, w = a.shape[:2]
    return a.reshape(h // ss, ss, w // ss, ss, *a.shape[2:]).mean(axis=(1, 3))


def _bleed(rgb, alpha):
    """Give transparent pixels the colour of their neighbours, so texture filtering at the
    outline mixes in the edge colour instead of black."""
    out = rgb.copy()
    empty = alpha <= 0.0
    if not empty.any() or empty.all():
        return out
    for sigma in (1.0, 3.0, 8.0):
        wsum = blur(alpha, sigma)
        csum = np.stack([blur(rgb[..., i] * alpha, sigma) for i in range(3)], axis=-1)
        fill = empty & (wsum > 1e-4)
        out[fill] = csum[fill] / wsum[fill][:, None]
        empty = empty & ~fill
        if not empty.any():
            break
    return out


def quantize(rgb, alpha):
    """Straight RGB and alpha (floats) to an 8-bit RGBA array with bled edge colours."""
    a8 = np.clip(np.round(alpha * 255.0), 0, 255)
    rgb = _bleed(np.clip(rgb, 0.0, 1.0), (a8 / 255.0).astype(np.float32))
    out = np.dstack([np.round(rgb * 255.0), a8])
    return np.clip(out, 0, 255).astype(np.uint8)


def finish(rgb, alpha, ss=SS):
    """Supersampled straight colour and coverage to a final RGBA array."""
    prem = downsample(rgb * alpha[..., None], ss)
    a = downsample(alpha, ss)
    straight = prem / np.maximum(a, 1e-6)[..., None]
    return quantize(straight, a)


def finish_glow(lum, ss=SS, floor=None):
    """Supersampled emitted light to RGBA whose colour times alpha gives back the light.

    Drawn additively or over black, the result shows exactly `lum`; alpha follows brightness,
    so faint halos stay below a collision threshold of one half. `floor` (final size) raises
    alpha where a solid body should count although it glows only faintly."""
    light_ = np.clip(downsample(lum, ss), 0.0, 1.0)
    a = light_.max(axis=-1)
    if floor is not None:
        a = np.maximum(a, floor)
    rgb = light_ / np.maximum(a, 1e-6)[..., None]
    return quantize(rgb, a)


def over(top, bottom):
    """Porter-Duff 'over' of two 8-bit RGBA arrays."""
    t = top.astype(np.float32) / 255.0
    b = bottom.astype(np.float32) / 255.0
    ta, ba = t[..., 3:], b[..., 3:]
    a = ta + ba * (1 - ta)
    rgb = (t[..., :3] * ta + b[..., :3] * ba * (1 - ta)) / np.maximum(a, 1e-6)
    return quantize(rgb, a[..., 0])


def add_glow(base, glow):
    """A glow (from finish_glow) added onto a sprite drawn with alpha blending."""
    b = base.astype(np.float32) / 255.0
    g = glow.astype(np.float32) / 255.0
    prem = b[..., :3] * b[..., 3:] + g[..., :3] * g[..., 3:]
    a = np.clip(np.maximum(b[..., 3], np.minimum(1.0, b[..., 3] + g[..., 3])), 0, 1)
    rgb = prem / np.maximum(a, 1e-6)[..., None]
    return quantize(np.clip(rgb, 0, 1), a)


def save(rgba, path):
    Image.fromarray(rgba, "RGBA").save(path, compress_level=9)


def ramp(t, stops):
    """Colour ramp: `stops` is a list of (position, (r, g, b)) sorted by position."""
    t = np.clip(t, 0.0, 1.0)
    out = np.zeros(t.shape + (3,), np.float32)
    pos = [p for p, _ in stops]
    for c in range(3):
        out[..., c] = np.interp(t, pos, [col[c] for _, col in stops])
    return out


def radial(h, w, cx, cy):
    """Distance and angle of every pixel from (cx, cy)."""
    ys, xs = np.mgrid[0:h, 0:w].astype(np.float32)
    dx, dy = xs + 0.5 - cx, ys + 0.5 - cy
    return np.hypot(dx, dy), np.arctan2(dy, dx)

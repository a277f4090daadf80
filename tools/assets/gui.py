"""Title logo, window icon and the pieces the GUI styles are built from.

Frames come as nine parts named after the style attributes that take them (upperLeft, upper,
..., lowerRight). Their edges and centres are uniform along the direction in which they are
tiled or stretched, so every stretch mode gives seamless frames of any size.
"""
import math

import numpy as np
from PIL import Image, ImageDraw, ImageFont

import render as R
from render import SS

FONT_BOLD = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"

PARTS = [("UpperLeft", 0, 0), ("Upper", 1, 0), ("UpperRight", 2, 0),
         ("Left", 0, 1), ("Center", 1, 1), ("Right", 2, 1),
         ("LowerLeft", 0, 2), ("Lower", 1, 2), ("LowerRight", 2, 2)]


def _rounded(size, margin, radius):
    im = Image.new("L", (size * SS, size * SS), 0)
    ImageDraw.Draw(im).rounded_rectangle(
        (margin * SS, margin * SS, (size - margin) * SS - 1, (size - margin) * SS - 1),
        radius=int(radius * SS), fill=255)
    return R.to_float(im)


def _frame(n, margin, radius, fill, fill_alpha, border, border_width, top_light, glow=None,
           inset=False, gloss=0.0):
    """A rounded box of 3n x 3n pixels: filled body, lit border, optional outer glow and a
    sheen under the upper border (kept within the upper parts, so the middle stays flat)."""
    size = 3 * n
    outer = _rounded(size, margin, radius)
    inner = _rounded(size, margin + border_width, max(radius - border_width, 1))
    ring = np.clip(outer - inner, 0, 1)
    ys = (np.mgrid[0:size * SS, 0:size * SS][0] + 0.5) / (size * SS)
    # The border is lit from above (raised) or from below (sunk into the panel).
    shade = 1.0 + top_light * (0.5 - ys) * 2.0 * (-1 if inset else 1)
    rgb = np.zeros((size * SS, size * SS, 3), np.float32)
    rgb += inner[..., None] * np.asarray(fill, np.float32)
    if gloss:
        rows = np.clip(1.0 - ys * 3.0, 0, 1) ** 1.5
        rgb += (inner * rows * gloss)[..., None] * np.array([0.8, 0.9, 1.0])
    rgb += ring[..., None] * np.clip(np.asarray(border, np.float32) * shade[..., None], 0, 1)
    alpha = inner * fill_alpha + ring
    if glow is not None:
        g = R.blur(outer, 1.5 * SS) * (1 - outer) * 0.8
        rgb = rgb * alpha[..., None] + np.asarray(glow, np.float32) * g[..., None]
        alpha = alpha + g
        rgb = rgb / np.maximum(alpha, 1e-6)[..., None]
    return R.finish(rgb, alpha)


def _slice(img, n, name):
    out = {}
    for part, cx, cy in PARTS:
        piece = img[cy * n:(cy + 1) * n, cx * n:(cx + 1) * n].copy()
        # Pieces that are tiled repeat one line of pixels, so they join without seams.
        if part in ("Upper", "Lower"):
            piece[:] = piece[:, n // 2:n // 2 + 1]
        elif part in ("Left", "Right"):
            piece[:] = piece[n // 2:n // 2 + 1, :]
        elif part == "Center":
            piece[:] = piece[n // 2, n // 2]
        out[name + part] = piece
    return out


def frames():
    """Name -> RGBA of every nine-part frame piece."""
    out = {}
    out.update(_slice(_frame(16, 2, 9, (0.04, 0.07, 0.14), 0.86, (0.45, 0.65, 0.95), 2.0, 0.35,
                             glow=(0.2, 0.45, 1.0)), 16, "panel"))
    out.update(_slice(_frame(8, 1, 6, (0.13, 0.2, 0.36), 0.95, (0.5, 0.65, 0.9), 1.2, 0.45,
                             gloss=0.25), 8, "button"))
    out.update(_slice(_frame(8, 1, 6, (0.18, 0.36, 0.62), 0.97, (0.6, 0.95, 1.0), 1.4, 0.3,
                             glow=(0.3, 0.8, 1.0), gloss=0.3), 8, "buttonHot"))
    out.update(_slice(_frame(8, 1, 6, (0.07, 0.12, 0.24), 0.97, (0.4, 0.6, 0.85), 1.2, 0.45,
                             inset=True), 8, "buttonDown"))
    out.update(_slice(_frame(8, 1, 5, (0.01, 0.02, 0.05), 0.92, (0.35, 0.45, 0.65), 1.0, 0.5,
                             inset=True), 8, "field"))
    return out


# ---------------------------------------------------------------- small pieces

def _disc(size, radius, inner_color, edge_color, spec=0.9):
    n = size * SS
    rho, _ = R.radial(n, n, n / 2, n / 2)
    rad = radius * SS
    q = np.clip(rho / rad, 0, 1)
    height = np.sqrt(np.clip(1 - q ** 2, 0, 1)) * rad * 0.5
    mask = (rho < rad).astype(np.float32)
    albedo = np.asarray(inner_color) * (1 - q[..., None] ** 4) + np.asarray(edge_color) * q[..., None] ** 4
    col = R.light(R.normals(height), albedo.astype(np.float32), spec=spec, shininess=30.0)
    return col, mask


def knob(hot):
    col, mask = _disc(20, 8.5, (0.62, 0.68, 0.78), (0.3, 0.36, 0.5))
    n = 20 * SS
    rho, _ = R.radial(n, n, n / 2, n / 2)
    dot = (rho < 2.6 * SS)[..., None]
    centre = (1.0, 0.75, 0.3) if not hot else (0.5, 1.0, 1.0)
    col = np.where(dot, np.asarray(centre, np.float32), col)
    img = R.finish(col, mask)
    if hot:
        ring = np.exp(-((rho - 9.0 * SS) / (1.2 * SS)) ** 2) * 0.9
        img = R.add_glow(img, R.finish_glow(ring[..., None] * np.array([0.3, 0.85, 1.0])))
    return img


def checkbox(checked, hot=False):
    """Unchecked or ticked; a focused box has a bright, glowing rim like the focused buttons."""
    n = 20
    rim, glow = ((0.6, 0.95, 1.0), (0.3, 0.8, 1.0)) if hot else ((0.45, 0.6, 0.85), None)
    box = _frame(n // 3 + 1, 1, 3, (0.01, 0.02, 0.05), 0.92, rim, 1.2, 0.5, inset=True, glow=glow)
    box = np.array(Image.fromarray(box).resize((n, n), Image.LANCZOS))
    if not checked:
        return box
    im = Image.new("L", (n * SS, n * SS), 0)
    ImageDraw.Draw(im).line([(4.5 * SS, 10.5 * SS), (8.5 * SS, 14.5 * SS), (15.5 * SS, 5 * SS)],
                            fill=255, width=int(2.6 * SS), joint="curve")
    mark = R.to_float(im)
    lum = mark[..., None] * np.array([0.75, 1.0, 0.75]) + R.blur(mark, 1.5 * SS)[..., None] * np.array(
        [0.2, 1.0, 0.4]) * 0.8
    return R.add_glow(box, R.finish_glow(lum))


def arrow(direction):
    n = 12
    im = Image.new("L", (n * SS, n * SS), 0)
    pts = {"Down": [(2, 3.5), (10, 3.5), (6, 9)], "Right": [(3.5, 2), (9, 6), (3.5, 10)]}[direction]
    ImageDraw.Draw(im).polygon([(x * SS, y * SS) for x, y in pts], fill=255)
    mask = R.to_float(im)
    rgb = np.ones(mask.shape + (3,), np.float32) * np.array([0.7, 0.9, 1.0])
    return R.finish(rgb, mask)


def cursor():
    """Arrow pointer; its tip is pixel (2, 2)."""
    n = 24
    pts = [(2, 2), (2, 19), (6.3, 15.2), (9.2, 21.5), (12.2, 20.2), (9.4, 14), (15, 14)]
    im = Image.new("L", (n * SS, n * SS), 0)
    ImageDraw.Draw(im).polygon([(x * SS, y * SS) for x, y in pts], fill=255)
    body = R.to_float(im)
    outline = np.clip(R.blur(body, 0.9 * SS) * 3.0, 0, 1)
    shadow = np.roll(np.roll(R.blur(body, 1.2 * SS), 2 * SS, axis=0), 1 * SS, axis=1) * 0.5
    ys = (np.mgrid[0:n * SS, 0:n * SS][0] / (n * SS))[..., None]
    fill = np.array([1.0, 1.0, 1.0]) * (1 - ys) + np.array([0.6, 0.85, 1.0]) * ys
    rgb = body[..., None] * fill + (1 - body[..., None]) * np.array([0.02, 0.04, 0.1])
    alpha = np.maximum(np.maximum(body, outline), shadow)
    return R.finish(rgb, alpha)


# ---------------------------------------------------------------- logo and icon

LOGO_W, LOGO_H = 576, 144


def _text_mask(text, font_px, w, h, skew):
    font = ImageFont.truetype(FONT_BOLD, font_px * SS)
    im = Image.new("L", (w * SS, h * SS), 0)
    d = ImageDraw.Draw(im)
    box = d.textbbox((0, 0), text, font=font)
    tw, th = box[2] - box[0], box[3] - box[1]
    d.text(((w * SS - tw) / 2 - box[0], (h * SS - th) / 2 - box[1]), text, font=font, fill=255)
    # Slant forwards for speed; the shear is about the middle line.
    im = im.transform(im.size, Image.AFFINE, (1, skew, -skew * h * SS / 2, 0, 1, 0), Image.BICUBIC)
    return R.to_float(im)


def logo():
    w, h = LOGO_W, LOGO_H
    letters = _text_mask("VANTORIX", 92, w, h - 16, 0.22)
    letters = np.pad(letters, ((0, 16 * SS), (0, 0)))
    letters = np.roll(letters, 2 * SS, axis=0)
    rows = np.nonzero(letters.max(axis=1) > 0.5)[0]
    top, bottom = rows.min(), rows.max()
    height = R.bevel(letters, 5 * SS) * 6 * SS + R.blur(letters, 2 * SS) * 2 * SS
    n = R.normals(height)
    ys = (np.mgrid[0:h * SS, 0:w * SS][0] - top) / float(bottom - top)
    # Chrome: sky above a sharp horizon, warm ground below, bent by the surface normal.
    t = np.clip(ys + n[..., 1] * 0.35, 0, 1)
    chrome = R.ramp(t, [(0.0, (0.55, 0.8, 1.0)), (0.4, (0.95, 0.98, 1.0)), (0.52, (0.85, 0.9, 1.0)),
                        (0.54, (0.12, 0.1, 0.35)), (0.65, (0.55, 0.2, 0.45)),
                        (0.85, (1.0, 0.6, 0.25)), (1.0, (1.0, 0.9, 0.6))])
    diffuse = np.clip(n @ R.LIGHT, 0, 1)[..., None]
    spec = np.clip(n @ R.HALFWAY, 0, 1)[..., None] ** 40
    face = chrome * (0.65 + 0.45 * diffuse) + spec * 0.9
    outline = np.clip(R.blur(letters, 2.2 * SS) * 2.5, 0, 1)
    edge_col = np.array([0.04, 0.03, 0.12])
    rgb = letters[..., None] * face + (1 - letters[..., None]) * edge_col
    alpha = np.maximum(letters, outline)
    base = R.finish(np.clip(rgb, 0, 1), alpha)
    # Glow behind the letters and a light streak under them.
    halo = R.blur(letters, 7 * SS)
    xs = (np.mgrid[0:h * SS, 0:w * SS][1] + 0.5) / SS
    yline = (bottom / SS) + 7.0
    line_y = (np.mgrid[0:h * SS, 0:w * SS][0] + 0.5) / SS
    streak = np.exp(-((line_y - yline) / 0.9) ** 2) * np.exp(-((xs - w / 2) / (w * 0.33)) ** 2)
    flare = np.exp(-((line_y - yline) / 3.0) ** 2 - ((xs - w / 2) / 40.0) ** 2)
    glow = (halo[..., None] * np.array([0.35, 0.2, 0.9]) * 0.9
            + streak[..., None] * np.array([0.6, 0.85, 1.0]) * 1.3
            + flare[..., None] * np.array([0.5, 0.7, 1.0]) * 0.6)
    behind = R.finish_glow(glow)
    return R.over(base, behind)


def icon(ship_frame):
    """32 x 32 window icon: the first player's ship on a round badge."""
    n = 32
    rho, _ = R.radial(n * SS, n * SS, n * SS / 2, n * SS / 2)
    badge = (rho < 15.5 * SS).astype(np.float32)
    ring = ((rho > 13.8 * SS) & (rho < 15.5 * SS))[..., None]
    ys = (np.mgrid[0:n * SS, 0:n * SS][0] / (n * SS))[..., None]
    rgb = np.array([0.05, 0.08, 0.2]) * (1 - ys) + np.array([0.01, 0.02, 0.06]) * ys
    rgb = np.where(ring, np.array([0.35, 0.7, 1.0]), rgb)
    back = R.finish(rgb.astype(np.float32), badge)
    f = ship_frame.astype(np.float32) / 255.0
    prem = R.downsample(np.dstack([f[..., :3] * f[..., 3:], f[..., 3:]]), 2)
    ship = R.quantize(prem[..., :3] / np.maximum(prem[..., 3:], 1e-6), prem[..., 3])
    return R.over(ship, back)

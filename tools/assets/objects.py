"""What comes down from above: asteroids, containers, extras and the crystal."""
import math

import numpy as np
from PIL import Image, ImageDraw

import render as R
from model import Model
from render import SS

ASTEROID_FRAMES = 32
CONTAINER_SIZE = 48
CONTAINER_FRAMES = 32
EXTRA_SIZE = 32
EXTRA_FRAMES = 16
CRYSTAL_FRAMES = 16


# ---------------------------------------------------------------- asteroids

def asteroid_frames(size, radius, seed, craters):
    """A lumpy rock turning once over the frames, lit from a fixed direction.

    The rock is light grey: the game tints asteroids that carry energy."""
    r = R.rng(seed)
    n = size * SS
    c = n / 2.0
    rad = radius * SS
    harmonics = [(k, r.normal(0, 0.12 / k ** 1.25), r.random() * 2 * math.pi) for k in range(2, 7)]
    rough = [(k, r.normal(0, 0.012), r.random() * 2 * math.pi) for k in range(7, 15)]

    def outline(angle):
        out = np.ones_like(angle)
        for k, amp, phase in harmonics + rough:
            out += amp * np.cos(k * angle + phase)
        return rad * out

    rho, ang = R.radial(n, n, c, c)
    edge = outline(ang)
    q = np.clip(rho / edge, 0, 1.2)
    inside = rho < edge
    dome = np.sqrt(np.clip(1.0 - q ** 2, 0, 1)) * rad * 0.9
    bumps = (R.noise(r, n, n, 3, octaves=5, persistence=0.55) - 0.5) * rad * 0.3
    grain = (R.noise(r, n, n, 12, octaves=3) - 0.5) * rad * 0.06
    height = dome + bumps + grain
    tone = R.noise(r, n, n, 2, octaves=4)
    speckle = R.noise(r, n, n, 10, octaves=2)
    albedo = np.ones((n, n, 3), np.float32) * np.array([0.68, 0.66, 0.62], np.float32)
    albedo *= (0.7 + 0.45 * tone - 0.25 * np.clip(speckle - 0.6, 0, 1))[..., None]
    ys, xs = np.mgrid[0:n, 0:n].astype(np.float32)
    placed = []
    tries = 0
    while len(placed) < craters and tries < 200:
        tries += 1
        a = r.random() * 2 * math.pi
        d = math.sqrt(r.random()) * 0.8 * rad
        cx, cy = c + math.cos(a) * d, c + math.sin(a) * d
        cr = rad * (0.1 + 0.18 * r.random() ** 1.5)
        if any(math.hypot(cx - px, cy - py) < (cr + pr) * 0.9 for px, py, pr in placed):
            continue
        placed.append((cx, cy, cr))
        dd = np.hypot(xs - cx, ys - cy) / cr
        bowl = np.clip(1.0 - dd ** 2, 0, 1)
        rim = np.exp(-((dd - 1.0) / 0.3) ** 2)
        height += cr * (-0.5 * bowl + 0.18 * rim)
        albedo *= (1.0 - 0.15 * bowl)[..., None]
    height = np.where(inside, height, 0.0).astype(np.float32)
    albedo = np.where(inside[..., None], albedo, 0.0).astype(np.float32)
    frames = []
    for i in range(ASTEROID_FRAMES):
        turn = -2 * math.pi * i / ASTEROID_FRAMES
        h = R.rotate(height, turn, c, c)
        alb = R.rotate(albedo, turn, c, c)
        mask = (rho < outline(ang + turn)).astype(np.float32)
        col = R.light(R.normals(h), alb, spec=0.06, shininess=8.0, ambient=0.7, rim=1.4)
        frames.append(R.finish(col, mask))
    return frames


def asteroid_small():
    return asteroid_frames(32, 12.5, 31, 4)


def asteroid_large():
    return asteroid_frames(64, 26.0, 32, 8)


# ---------------------------------------------------------------- crystal

def _gem_faces(turn, tilt=math.radians(24)):
    """Front faces of a six-sided crystal turned about its long axis: (points, normal)."""
    ring_top, ring_bottom, top, bottom, width = -0.42, 0.36, -1.15, 1.05, 0.62
    verts = {"top": (0.0, top, 0.0), "bottom": (0.0, bottom, 0.0)}
    for i in range(6):
        a = turn + i * math.pi / 3
        verts[("u", i)] = (width * math.cos(a), ring_top, width * math.sin(a))
        verts[("l", i)] = (width * math.cos(a), ring_bottom, width * math.sin(a))
    ct, st = math.cos(tilt), math.sin(tilt)
    proj = {}
    for k, (x, y, z) in verts.items():
        # Tip the top towards the viewer.
        proj[k] = np.array([x, y * ct - z * st, y * st + z * ct])
    faces = []
    for i in range(6):
        j = (i + 1) % 6
        faces.append([proj["top"], proj[("u", j)], proj[("u", i)]])
        faces.append([proj[("u", i)], proj[("u", j)], proj[("l", j)], proj[("l", i)]])
        faces.append([proj[("l", i)], proj[("l", j)], proj["bottom"]])
    out = []
    for pts in faces:
        nrm = np.cross(pts[1] - pts[0], pts[2] - pts[0])
        nrm = nrm / np.linalg.norm(nrm)
        if nrm[2] > 0:
            out.append((pts, nrm))
    out.sort(key=lambda f: float(np.mean([p[2] for p in f[0]])))
    return out


def crystal_frames(size=EXTRA_SIZE, scale=10.5):
    frames = []
    n = size * SS
    base = np.array([0.3, 0.95, 0.85])
    for i in range(CRYSTAL_FRAMES):
        # Six-fold symmetry: a sixth of a turn loops seamlessly.
        turn = (math.pi / 3) * i / CRYSTAL_FRAMES
        rgb = np.zeros((n, n, 3), np.float32)
        mask_im = Image.new("L", (n, n), 0)
        edge_im = Image.new("L", (n, n), 0)
        for pts, nrm in _gem_faces(turn):
            diffuse = max(0.0, float(nrm @ R.LIGHT))
            spec = max(0.0, float(nrm @ R.HALFWAY)) ** 30
            # Facets turned aside refract towards blue and violet.
            hue = base * (1 - abs(nrm[0])) + np.array([0.45, 0.5, 1.0]) * abs(nrm[0])
            col = hue * (0.25 + 0.7 * diffuse) + spec * 0.45 + np.array([0.04, 0.08, 0.1])
            poly = [(n / 2 + p[0] * scale * SS, n / 2 + p[1] * scale * SS) for p in pts]
            face = Image.new("L", (n, n), 0)
            ImageDraw.Draw(face).polygon(poly, fill=255)
            ImageDraw.Draw(mask_im).polygon(poly, fill=255)
            ImageDraw.Draw(edge_im).line(poly + [poly[0]], fill=255, width=2)
            rgb[R.to_float(face) > 0.5] = np.clip(col, 0, 1)
        mask = R.to_float(mask_im)
        edges = R.to_float(edge_im) * mask
        rgb = rgb * (1 - edges[..., None] * 0.5) + np.array([0.8, 1.0, 1.0]) * edges[..., None] * 0.5
        body = R.finish(np.clip(rgb, 0, 1), mask)
        rho, _ = R.radial(n, n, n / 2, n / 2)
        breathe = 0.8 + 0.2 * math.cos(i * 2 * math.pi / CRYSTAL_FRAMES)
        halo = np.exp(-(rho / (9 * SS)) ** 2) * 0.35 * breathe
        glow = halo[..., None] * base
        # A glint flashes on the upper facets once per loop.
        glint = _glint_at(n, 12.5 * SS, 9.5 * SS, max(0.0, 1.0 - abs(i - 4) / 2.5))
        frames.append(R.add_glow(body, R.finish_glow(glow + glint[..., None])))
    return frames


def _glint_at(n, cx, cy, strength):
    ys, xs = np.mgrid[0:n, 0:n].astype(np.float32)
    dx, dy = (xs - cx) / SS, (ys - cy) / SS
    star = np.exp(-(dx / 3.5) ** 2 - (dy / 0.45) ** 2) + np.exp(-(dx / 0.45) ** 2 - (dy / 3.5) ** 2)
    return (star + np.exp(-(dx * dx + dy * dy) / 1.2)) * strength


# ---------------------------------------------------------------- containers

def _container_model(stripe, core, emblem):
    m = Model(CONTAINER_SIZE, CONTAINER_SIZE)
    steel = (0.56, 0.58, 0.62)
    octagon = [(18 * math.cos(a), 18 * math.sin(a))
               for a in np.linspace(math.pi / 8, 2 * math.pi + math.pi / 8, 8, endpoint=False)]
    m.layer(m.poly_mask(octagon), steel, thickness=2.2, bevel=2.5, spec=0.5)
    for k in range(4):
        a = k * math.pi / 2
        ca, sa = math.cos(a), math.sin(a)

        def rot(x, y):
            return (x * ca - y * sa, x * sa + y * ca)
        clamp = [rot(11, -6), rot(20.5, -5), rot(20.5, 5), rot(11, 6)]
        m.layer(m.poly_mask(clamp), stripe, thickness=1.6, bevel=1.2, spec=0.45)
        for off in (-2.5, 1.0):
            band = [rot(13 + off, -6.5), rot(14.5 + off, -6.5), rot(13.5 + off, 6.5), rot(12 + off, 6.5)]
            m.paint(m.poly_mask(band), (0.12, 0.12, 0.14))
        m.groove(m.line_mask([rot(6, -13), rot(13, -6)], 0.45))
    m.layer(m.ellipse_mask(0, 0, 9.5, 9.5), (0.3, 0.32, 0.36), thickness=0.8, bevel=1.0, spec=0.6)
    dome = m.ellipse_mask(0, 0, 7.2, 7.2)
    m.layer(dome, np.asarray(core) * 0.5, thickness=1.0, bevel=1.5, dome=2.5, spec=1.4)
    m.light_up(dome * 0.75, np.asarray(core) * 0.8)
    emblem(m)
    return m


def _emblem_question(m):
    m.light_up(m.line_mask([(-2.4, -2.4), (-1.6, -4.2), (0.8, -4.6), (2.6, -3.2), (2.2, -1.0),
                            (0.2, 0.4), (0.0, 2.0)], 1.5), (1.0, 1.0, 0.85))
    m.light_up(m.ellipse_mask(0, 4.2, 1.0, 1.0), (1.0, 1.0, 0.85))


def _emblem_bolt(m):
    m.light_up(m.poly_mask([(1.2, -5.6), (-3.2, 0.8), (-0.2, 0.8), (-1.4, 5.6), (3.2, -0.9),
                            (0.2, -0.9)]), (0.9, 1.0, 1.0))


def _emblem_hourglass(m):
    m.light_up(m.poly_mask([(-3.4, -5.0), (3.4, -5.0), (0.6, 0.0), (3.4, 5.0), (-3.4, 5.0),
                            (-0.6, 0.0)]), (1.0, 0.9, 1.0))


def _turned(model, angle):
    c = model.w / 2.0
    out = Model(model.width, model.height)
    out.z = R.rotate(model.z, angle, c, c)
    out.mask = (R.rotate(model.mask, angle, c, c) > 0.5).astype(np.float32)
    out.albedo = R.rotate(model.albedo, angle, c, c)
    out.spec = R.rotate(model.spec, angle, c, c)
    out.emissive = R.rotate(model.emissive, angle, c, c)
    return out


def container_frames(stripe, core, emblem, seed):
    model = _container_model(stripe, core, emblem)
    frames = []
    for i in range(CONTAINER_FRAMES):
        turned = _turned(model, 2 * math.pi * i / CONTAINER_FRAMES)
        # Beacons blink in turn round the rim.
        lit = i % 8
        for k in range(4):
            a = k * math.pi / 2 + math.pi / 4 + 2 * math.pi * i / CONTAINER_FRAMES
            if lit // 2 == k:
                turned.halo(15 * math.cos(a), 15 * math.sin(a), 2.2, core, 1.0)
        frames.append(turned.render())
    return frames


def containers():
    return [
        container_frames((0.95, 0.72, 0.12), (1.0, 0.75, 0.2), _emblem_question, 41),
        container_frames((0.2, 0.45, 0.95), (0.3, 0.7, 1.0), _emblem_bolt, 42),
        container_frames((0.62, 0.25, 0.9), (0.85, 0.45, 1.0), _emblem_hourglass, 43),
    ]


# ---------------------------------------------------------------- extras

EMBLEM_SCALE = 0.86  # leaves room for the glow inside the image


def _symbol(draw_fn):
    n = EXTRA_SIZE * SS
    im = Image.new("L", (n, n), 0)
    c = EXTRA_SIZE / 2.0

    def p(x, y):
        return ((c + (x - c) * EMBLEM_SCALE) * SS, (c + (y - c) * EMBLEM_SCALE) * SS)
    draw_fn(ImageDraw.Draw(im), p, SS * EMBLEM_SCALE)
    return R.to_float(im)


def _regular(cx, cy, radius, count, start):
    return [(cx + radius * math.cos(start + 2 * math.pi * k / count),
             cy + radius * math.sin(start + 2 * math.pi * k / count)) for k in range(count)]


def _outline_hexagon(d, p, s):
    d.polygon([p(x, y) for x, y in _regular(16, 16, 14.2, 6, math.pi / 6)], outline=255, width=int(1.6 * s))


def _outline_circle(d, p, s):
    d.ellipse((*p(2, 2), *p(30, 30)), outline=255, width=int(1.6 * s))


def _outline_diamond(d, p, s):
    d.polygon([p(16, 1.5), p(30.5, 16), p(16, 30.5), p(1.5, 16)], outline=255, width=int(1.6 * s))


def _outline_crest(d, p, s):
    pts = [(4, 4), (28, 4), (28, 15), (25, 23), (16, 30), (7, 23), (4, 15)]
    d.polygon([p(x, y) for x, y in pts], outline=255, width=int(1.6 * s))


def _sym_beams(d, p, s):
    for x in (9.5, 16, 22.5):
        d.line([p(16, 24), p(x, 8)], fill=255, width=int(2.2 * s))
        d.ellipse((*p(x - 1.7, 6.3), *p(x + 1.7, 9.7)), fill=255)


def _sym_chevrons(d, p, s):
    for y in (8, 15):
        d.line([p(9, y + 7), p(16, y), p(23, y + 7)], fill=255, width=int(2.6 * s), joint="curve")


def _sym_bullets(d, p, s):
    for x in (10, 16, 22):
        d.rounded_rectangle((*p(x - 2.1, 9), *p(x + 2.1, 23)), radius=int(2.1 * s), fill=255)
        d.line([p(x - 2.1, 19), p(x + 2.1, 19)], fill=0, width=int(0.8 * s))


def _sym_bolt(d, p, s):
    d.polygon([p(18.5, 7), p(10.5, 17.5), p(15.5, 17.5), p(13, 26), p(21.5, 14.5), p(16.5, 14.5)], fill=255)


def _sym_hourglass(d, p, s):
    d.polygon([p(10, 8), p(22, 8), p(17, 16), p(22, 24), p(10, 24), p(15, 16)], fill=255)
    d.line([p(9, 7.5), p(23, 7.5)], fill=255, width=int(1.6 * s))
    d.line([p(9, 24.5), p(23, 24.5)], fill=255, width=int(1.6 * s))


def _clock_ticks(phase):
    def draw(d, p, s):
        for k in range(12):
            a = phase + k * math.pi / 6
            x0, y0 = 16 + 11.2 * math.cos(a), 16 + 11.2 * math.sin(a)
            x1, y1 = 16 + 13.4 * math.cos(a), 16 + 13.4 * math.sin(a)
            d.line([p(x0, y0), p(x1, y1)], fill=255, width=int(1.2 * s))
    return draw


def _glint(angle_frac, outline_radius):
    """A four-pointed sparkle running round the emblem's frame."""
    n = EXTRA_SIZE * SS
    a = 2 * math.pi * angle_frac - math.pi / 2
    cx, cy = (16 + outline_radius * math.cos(a)) * SS, (16 + outline_radius * math.sin(a)) * SS
    ys, xs = np.mgrid[0:n, 0:n].astype(np.float32)
    dx, dy = (xs - cx) / SS, (ys - cy) / SS
    star = np.exp(-(dx / 2.4) ** 2 - (dy / 0.5) ** 2) + np.exp(-(dx / 0.5) ** 2 - (dy / 2.4) ** 2)
    return star + np.exp(-(dx * dx + dy * dy) / 1.5)


def extra_frames(color, outline, symbol, turning=None):
    color = np.asarray(color, np.float32)
    shape = _symbol(outline)
    sym = _symbol(symbol)
    frames = []
    for i in range(EXTRA_FRAMES):
        phase = 2 * math.pi * i / EXTRA_FRAMES
        pulse = 0.85 + 0.15 * math.cos(phase)
        ring = shape if turning is None else np.maximum(shape, _symbol(turning(phase / 12)))
        body = R.blur(R.ellipse(EXTRA_SIZE * SS, EXTRA_SIZE * SS, (5 * SS, 5 * SS, 27 * SS, 27 * SS)),
                      3 * SS)
        lum = (color * 0.22 * pulse) * body[..., None]
        lum = lum + color * (R.blur(ring, 1.5 * SS) * 1.4 * pulse)[..., None] + color * ring[..., None] * 0.7
        lum = lum + color * (R.blur(sym, 2.0 * SS) * 1.6)[..., None]
        lum = lum + (np.array([1.0, 1.0, 1.0]) * 0.55 + color * 0.45) * sym[..., None]
        lum = lum + _glint(i / EXTRA_FRAMES, 11.0)[..., None] * (0.5 + 0.5 * color) * 0.8
        frames.append(R.finish_glow(lum))
    return frames


def extras():
    """Each kind has its own colour, frame and symbol."""
    return {
        "extraLaserType": extra_frames((0.3, 1.0, 0.35), _outline_hexagon, _sym_beams),
        "extraSpeedup": extra_frames((1.0, 0.8, 0.15), _outline_circle, _sym_chevrons),
        "extraFireRate": extra_frames((1.0, 0.3, 0.15), _outline_diamond, _sym_bullets),
        "extraShield": extra_frames((0.25, 0.55, 1.0), _outline_crest, _sym_bolt),
        "extraTimeWarp": extra_frames((0.8, 0.35, 1.0), _outline_circle, _sym_hourglass,
                                      turning=_clock_ticks),
    }

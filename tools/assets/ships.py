"""The two player ships with their banking frames, and the pirate in both facings."""
import math

import numpy as np

import render as R
from model import Model

SHIP_SIZE = 64
BANK_FRAMES = 11          # frame 5 flies straight, 0 banks fully left, 10 fully right
MAX_BANK = math.radians(32)
# Both player ships end their hull in one nozzle, so that a single flame fits both.
NOZZLE_Y = 25

FOE_W, FOE_H = 64, 104    # the pirate lies across the screen, thrusters above and below
FOE_FRAMES = 12           # 0 full thrust downwards, 5 idle, 11 full thrust upwards

WHITE = (0.86, 0.88, 0.92)
BLUE = (0.12, 0.34, 0.95)
STEEL = (0.45, 0.48, 0.53)
DARK = (0.16, 0.17, 0.2)
GUNMETAL = (0.36, 0.38, 0.42)
ORANGE = (0.98, 0.42, 0.06)


def _nozzle(m, color_glow):
    m.layer(m.ellipse_mask(0, NOZZLE_Y - 1.2, 4.2, 2.4), DARK, thickness=1.5, bevel=1.0, spec=0.6)
    m.light_up(m.ellipse_mask(0, NOZZLE_Y - 1.0, 2.6, 1.3), color_glow)
    m.halo(0, NOZZLE_Y, 3.0, np.asarray(color_glow) * 0.6)


def player1():
    """Interceptor: slim white dart with swept wings and wingtip cannons."""
    m = Model(SHIP_SIZE, SHIP_SIZE)
    wing = [(4, -6), (20, 8), (25, 12), (25, 19), (20, 20), (4, 17)]
    m.layer(m.poly_mask(R.mirror_x(wing)), WHITE, thickness=1.6, bevel=2.5, spec=0.5)
    # Blue leading edges.
    m.paint(m.poly_mask(R.mirror_x([(4, -6), (20, 8), (25, 12), (25, 14.5), (19, 11), (4, -2)])), BLUE)
    fins = [(3, 12), (11, 21), (11, 25), (3, 23)]
    m.layer(m.poly_mask(R.mirror_x(fins)), WHITE, thickness=1.8, bevel=1.5, spec=0.5)
    m.paint(m.poly_mask(R.mirror_x([(8, 18), (11, 21), (11, 25), (8, 24)])), BLUE)
    for sx in (-1, 1):
        m.layer(m.line_mask([(sx * 24.5, -8), (sx * 24.5, 0)], 1.2), STEEL, thickness=1.6,
                bevel=0.5, spec=1.0, stack=False)
        pod = [(sx * 22.4, 0), (sx * 23.4, -4), (sx * 25.6, -4), (sx * 26.6, 0), (sx * 26.6, 20),
               (sx * 22.4, 20)]
        m.layer(m.poly_mask(pod), STEEL, thickness=2.8, bevel=1.4, dome=0.6, spec=0.8, stack=False)
        m.paint(m.poly_mask([(sx * 22.4, 15), (sx * 26.6, 15), (sx * 26.6, 17), (sx * 22.4, 17)]),
                BLUE)
        m.groove(m.line_mask([(sx * 22.4, 6), (sx * 26.6, 6)], 0.45))
        m.light_up(m.ellipse_mask(sx * 24.5, -2.0, 0.9, 1.0), (0.4, 1.0, 1.0))
        m.halo(sx * 24.5, -2.5, 2.0, (0.2, 0.8, 1.0), 0.6)
    body = [(0, -30), (2.4, -24), (4.2, -14), (5.6, -2), (6.2, 9), (5.8, 19), (4.2, 25), (0, 26)]
    m.layer(m.poly_mask(R.mirror_x(body)), WHITE, thickness=3.0, bevel=4.0, dome=2.5, spec=0.55)
    m.paint(m.poly_mask(R.mirror_x([(0, -30), (2.4, -24), (3.0, -21), (0, -25)])), BLUE)
    m.paint(m.poly_mask(R.mirror_x([(1.2, 4), (5.9, 4), (6.1, 7), (1.2, 7)])), BLUE)
    m.groove(m.line_mask([(-5.5, 0), (0, -3), (5.5, 0)], 0.5))
    m.groove(m.line_mask([(-5.6, 13), (5.6, 13)], 0.5))
    for sx in (-1, 1):
        m.groove(m.line_mask([(sx * 6, 2), (sx * 19, 12)], 0.45), dark=0.35)
    canopy = m.ellipse_mask(0, -11, 2.6, 6.5)
    m.layer(canopy, (0.05, 0.12, 0.3), thickness=1.4, bevel=1.6, dome=1.0, spec=1.6)
    m.light_up(m.ellipse_mask(-0.8, -13.5, 0.7, 2.2) * canopy, (0.55, 0.75, 1.0))
    _nozzle(m, (0.6, 0.85, 1.0))
    # Navigation lamps: red to port, green to starboard.
    m.halo(-20, 19, 1.6, (1.0, 0.15, 0.1), 0.9)
    m.halo(20, 19, 1.6, (0.2, 1.0, 0.3), 0.9)
    return m


def player2():
    """Striker: heavier twin-boom ship in gunmetal and orange with an amber canopy."""
    m = Model(SHIP_SIZE, SHIP_SIZE)
    wing = [(5, -2), (24, -9), (27, -6), (27, 3), (24, 6), (6, 13)]
    m.layer(m.poly_mask(R.mirror_x(wing)), GUNMETAL, thickness=1.8, bevel=2.0, spec=0.5)
    m.paint(m.poly_mask(R.mirror_x([(18, -6.8), (24, -9), (27, -6), (27, 3), (24, 6), (18, 7.5)])),
            ORANGE)
    for sx in (-1, 1):
        m.groove(m.line_mask([(sx * 18, -2), (sx * 27, -3.5)], 0.45), dark=0.3)
        m.groove(m.line_mask([(sx * 7, 5), (sx * 12, 3)], 0.45), dark=0.3)
    for sx in (-1, 1):
        boom = [(sx * 14.5, -28), (sx * 17, -20), (sx * 17.5, -4), (sx * 17.3, 17),
                (sx * 15.5, 22), (sx * 13.5, 22), (sx * 11.7, 17), (sx * 11.5, -4), (sx * 12, -20)]
        m.layer(m.poly_mask(boom), GUNMETAL, thickness=2.6, bevel=2.2, dome=1.2, spec=0.6)
        m.paint(m.poly_mask([(sx * 14.5, -28), (sx * 17, -20), (sx * 17.2, -15), (sx * 11.8, -15),
                             (sx * 12, -20)]), ORANGE)
        m.groove(m.line_mask([(sx * 11.8, 4), (sx * 17.3, 4)], 0.45))
        m.layer(m.ellipse_mask(sx * 14.5, 21, 1.9, 1.3), DARK, thickness=0.8, bevel=0.6)
        m.halo(sx * 14.5, 22.5, 1.8, (1.0, 0.55, 0.15), 0.8)
        m.light_up(m.ellipse_mask(sx * 14.5, -25.5, 0.8, 1.0), (1.0, 0.85, 0.3))
    body = [(0, -23), (3.5, -21.5), (6.3, -15), (7.4, -4), (7.8, 8), (7, 18), (5, 25), (0, 26)]
    m.layer(m.poly_mask(R.mirror_x(body)), GUNMETAL, thickness=3.2, bevel=4.0, dome=2.2, spec=0.5)
    m.paint(m.poly_mask(R.mirror_x([(0, -23), (3.5, -21.5), (5.2, -18), (0, -19.5)])), ORANGE)
    m.paint(m.poly_mask(R.mirror_x([(2.4, 6), (7.9, 6), (7.8, 9.5), (2.4, 9.5)])), ORANGE)
    m.groove(m.line_mask([(-7.5, 1), (7.5, 1)], 0.5))
    m.groove(m.line_mask([(-7.0, 16), (7.0, 16)], 0.5))
    m.groove(m.line_mask([(0, 10), (0, 22)], 0.45))
    canopy = m.ellipse_mask(0, -10, 3.4, 5.4)
    m.layer(canopy, (0.35, 0.18, 0.02), thickness=1.5, bevel=1.6, dome=1.0, spec=1.6)
    m.light_up(m.ellipse_mask(-1.0, -12, 0.9, 2.0) * canopy, (1.0, 0.8, 0.4))
    _nozzle(m, (0.6, 0.85, 1.0))
    m.halo(-26, 0, 1.6, (1.0, 0.15, 0.1), 0.9)
    m.halo(26, 0, 1.6, (0.2, 1.0, 0.3), 0.9)
    return m


def bank_frames(model):
    return [model.render(roll=MAX_BANK * (i - 5) / 5.0) for i in range(BANK_FRAMES)]


# ---------------------------------------------------------------- pirate

CRIMSON = (0.72, 0.08, 0.08)
CHARCOAL = (0.34, 0.33, 0.37)


class _Rotated(Model):
    """A model laid out nose-up but drawn with the nose to the right or to the left."""

    def __init__(self, width, height, facing_right):
        super().__init__(width, height)
        self.facing_right = facing_right

    def _pt(self, x, y):
        sx, sy = (-y, x) if self.facing_right else (y, x)
        return super()._pt(sx, sy)

    def ellipse_mask(self, cx, cy, rx, ry):
        # A quarter turn swaps the radii.
        im, d = R.new_mask(self.w, self.h)
        px, py = self._pt(cx, cy)
        d.ellipse((px - ry * R.SS, py - rx * R.SS, px + ry * R.SS, py + rx * R.SS), fill=255)
        return R.to_float(im)


def pirate(facing_right):
    m = _Rotated(FOE_W, FOE_H, facing_right)
    wing = [(6, -8), (18, -6), (27, 1), (28, 13), (24, 11), (21, 17), (16, 13), (8, 15)]
    m.layer(m.poly_mask(R.mirror_x(wing)), CHARCOAL, thickness=1.8, bevel=2.0, spec=0.45)
    m.paint(m.poly_mask(R.mirror_x([(18, -6), (27, 1), (28, 13), (24, 11), (22, 6), (16, 0)])),
            CRIMSON)
    for sx in (-1, 1):
        m.groove(m.line_mask([(sx * 10, 6), (sx * 20, 9)], 0.45), dark=0.3)
        m.groove(m.line_mask([(sx * 13, -4), (sx * 14, 13)], 0.45), dark=0.3)
        pod = [(sx * 25.5, -3), (sx * 29, -2), (sx * 30.5, 2), (sx * 30.5, 12), (sx * 29, 15),
               (sx * 25.5, 15), (sx * 24.5, 4)]
        m.layer(m.poly_mask(pod), GUNMETAL, thickness=2.6, bevel=1.2, dome=0.8, spec=0.7,
                stack=False)
        m.groove(m.line_mask([(sx * 24.5, 8), (sx * 30.5, 8)], 0.45))
        m.layer(m.ellipse_mask(sx * 30, 6.5, 1.2, 3.2), DARK, thickness=0.6, bevel=0.5,
                spec=0.6)
    for sx in (-1, 1):
        jaw = [(sx * 3, -12), (sx * 5.5, -29), (sx * 8.5, -22), (sx * 10, -8), (sx * 6, -5)]
        m.layer(m.poly_mask(jaw), CHARCOAL, thickness=2.6, bevel=1.8, dome=0.8, spec=0.6)
        m.paint(m.poly_mask([(sx * 5.5, -29), (sx * 8.5, -22), (sx * 7.6, -19), (sx * 5, -24)]),
                (0.85, 0.8, 0.7))
    body = [(0, -15), (6.5, -10), (8.5, 4), (7.5, 16), (4.5, 22), (0, 23)]
    m.layer(m.poly_mask(R.mirror_x(body)), CRIMSON, thickness=3.2, bevel=3.5, dome=2.0, spec=0.5)
    m.paint(m.poly_mask(R.mirror_x([(0, 2), (8.3, 2), (8.0, 10), (0, 10)])), CHARCOAL)
    m.groove(m.line_mask([(-8, 2), (8, 2)], 0.5))
    m.groove(m.line_mask([(-7.8, 10), (7.8, 10)], 0.5))
    for sx in (-1, 1):
        m.groove(m.line_mask([(sx * 9, -3), (sx * 28, 4)], 0.45), dark=0.3)
    eye = m.poly_mask(R.mirror_x([(0, -11), (3.8, -8), (3.2, -5.5), (0, -7)]))
    m.layer(eye, (0.3, 0.02, 0.02), thickness=0.8, bevel=0.8, spec=1.4)
    m.light_up(eye * 0.85, (1.0, 0.25, 0.1))
    m.halo(0, -8, 3.0, (1.0, 0.15, 0.05), 0.5)
    m.layer(m.ellipse_mask(0, 22, 4.5, 2.2), DARK, thickness=1.2, bevel=0.8, spec=0.6)
    m.light_up(m.ellipse_mask(0, 22.3, 3.0, 1.2), (1.0, 0.45, 0.2))
    m.halo(0, 24, 3.5, (1.0, 0.3, 0.1), 0.8)
    return m


def _thrust(width, height, facing_right, level, downward):
    """Glow of the wingtip thrusters: flames point down to climb and up to dive."""
    lum = np.zeros((height * R.SS, width * R.SS, 3), np.float32)
    if level <= 0:
        return lum
    ys, xs = np.mgrid[0:height * R.SS, 0:width * R.SS].astype(np.float32) / R.SS
    cx = width / 2.0 + (-6.5 if facing_right else 6.5)
    y0 = height / 2.0 + (30.5 if not downward else -30.5)
    length = 3.0 + 13.0 * level
    along = (ys - y0) * (1 if not downward else -1)
    across = xs - cx
    t = np.clip(along / length, 0, None)
    width_ = 2.4 * (1 - 0.6 * t) + 0.2
    core = np.exp(-(across / width_) ** 2) * np.exp(-(t * 2.2) ** 2) * (along > -0.5)
    halo = np.exp(-(across / (width_ * 2.2)) ** 2 - (np.clip(along, 0, None) / (length * 0.8)) ** 2
                  - (np.clip(-along, 0, None) / 1.2) ** 2)
    color_core = np.array([1.0, 0.92, 0.75])
    color_halo = np.array([1.0, 0.35, 0.1])
    lum += core[..., None] * color_core * (0.7 + 0.6 * level)
    lum += halo[..., None] * color_halo * (0.4 + 0.5 * level)
    return lum


def pirate_frames(facing_right):
    ship = pirate(facing_right).render()
    frames = []
    for f in range(FOE_FRAMES):
        if f == 5:
            level, down = 0.0, False
        elif f > 5:
            level, down = (f - 5) / 6.0, False
        else:
            level, down = (5 - f) / 5.0, True
        glow = _thrust(FOE_W, FOE_H, facing_right, level, down)
        frames.append(R.add_glow(ship, R.finish_glow(glow)) if level > 0 else ship)
    return frames

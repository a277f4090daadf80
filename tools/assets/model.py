"""Height-field models: hulls built from lit, bevelled layers and rendered with a roll.

A model is drawn top-down at supersampled size. Each layer paints a shape with its own
colour, shininess and thickness on top of what lies below, so canopies sit on fuselages and
fuselages on wings. Rendering lights the height field and may roll it about the vertical
axis, which is how ships bank.
"""
import math

import numpy as np

import render as R
from render import SS


class Model:
    def __init__(self, width, height):
        self.width, self.height = width, height
        self.w, self.h = width * SS, height * SS
        self.z = np.zeros((self.h, self.w), np.float32)
        self.mask = np.zeros((self.h, self.w), np.float32)
        self.albedo = np.zeros((self.h, self.w, 3), np.float32)
        self.spec = np.zeros((self.h, self.w), np.float32)
        self.emissive = np.zeros((self.h, self.w, 3), np.float32)
        self.halos = []

    # Shapes are given in pixels of the final image relative to its centre.
    def _pt(self, x, y):
        return ((self.width / 2 + x) * SS, (self.height / 2 + y) * SS)

    def poly_mask(self, points):
        im, d = R.new_mask(self.w, self.h)
        d.polygon([self._pt(x, y) for x, y in points], fill=255)
        return R.to_float(im)

    def ellipse_mask(self, cx, cy, rx, ry):
        im, d = R.new_mask(self.w, self.h)
        x0, y0 = self._pt(cx - rx, cy - ry)
        x1, y1 = self._pt(cx + rx, cy + ry)
        d.ellipse((x0, y0, x1, y1), fill=255)
        return R.to_float(im)

    def line_mask(self, points, width):
        im, d = R.new_mask(self.w, self.h)
        d.line([self._pt(x, y) for x, y in points], fill=255, width=max(1, int(round(width * SS))))
        return R.to_float(im)

    def layer(self, mask, color, thickness=2.0, bevel=2.0, dome=0.0, spec=0.35, emissive=None,
              stack=True):
        """Paints `mask` on top: its surface rises `thickness` pixels over `bevel` pixels from
        its outline (plus a rounded `dome`), above what lies below when `stack` is set."""
        sel = mask > 0.5
        if not sel.any():
            return
        base = self.z if stack else np.zeros_like(self.z)
        lift = thickness * SS * R.bevel(mask, bevel * SS)
        if dome:
            lift = lift + dome * SS * np.sqrt(np.clip(R.blur(mask, bevel * SS * 2.5), 0, 1))
        z = base + lift
        self.z[sel] = z[sel]
        self.albedo[sel] = color
        self.spec[sel] = spec
        self.emissive[sel] = emissive if emissive is not None else (0, 0, 0)
        self.mask = np.maximum(self.mask, sel.astype(np.float32))

    def paint(self, mask, color, amount=1.0):
        """Recolours the surface under `mask` without changing its shape (decals, stripes)."""
        m = (mask * amount)[..., None] * (self.mask[..., None] > 0)
        self.albedo = self.albedo * (1 - m) + np.asarray(color, np.float32) * m

    def groove(self, mask, depth=0.5, dark=0.45):
        """Panel lines: a shallow cut that also darkens the paint."""
        m = mask * (self.mask > 0)
        self.z -= depth * SS * m
        self.albedo *= (1 - dark * m)[..., None]

    def light_up(self, mask, color):
        """Self-lit parts (windows, lamps) that ignore the key light."""
        m = (mask * (self.mask > 0))[..., None]
        self.emissive = self.emissive * (1 - m) + np.asarray(color, np.float32) * m

    def halo(self, cx, cy, radius, color, strength=1.0):
        """Light glowing around a point, also beyond the hull (lamps, nozzles)."""
        self.halos.append((self._pt(cx, cy), radius, np.asarray(color, np.float32) * strength))

    def _glow(self, roll):
        glow = np.zeros((self.h, self.w, 3), np.float32)
        c, s = math.cos(roll), math.sin(roll)
        for (px, py), radius, color in self.halos:
            iy = int(min(max(py, 0), self.h - 1))
            ix = int(min(max(px, 0), self.w - 1))
            x = px - self.w / 2.0
            d, _ = R.radial(self.h, self.w, self.w / 2.0 + x * c + self.z[iy, ix] * s, py)
            glow += np.exp(-(d / (radius * SS)) ** 2)[..., None] * color
        return glow

    def render(self, roll=0.0, shininess=28.0):
        """Final RGBA; `roll` in radians turns the right side towards the viewer when
        positive."""
        n = R.normals(self.z)
        # Crevices where a higher part meets a lower one get less light.
        occlusion = np.clip(1.0 - np.clip(R.blur(self.z, 3 * SS) - self.z, 0, None) / (4.0 * SS),
                            0.55, 1.0)
        c, s = math.cos(roll), math.sin(roll)
        nr = np.stack([n[..., 0] * c + n[..., 2] * s, n[..., 1], -n[..., 0] * s + n[..., 2] * c],
                      axis=-1)
        col = R.light(nr, self.albedo * occlusion[..., None], spec=self.spec,
                      shininess=shininess, emissive=self.emissive)
        rgb, mask = (col, self.mask) if roll == 0.0 else self._splat(col, roll)
        base = R.finish(rgb, mask)
        if self.halos:
            base = R.add_glow(base, R.finish_glow(self._glow(roll)))
        return base

    def _splat(self, col, roll):
        """Forward-projects the rolled surface with a depth test; three sub-samples per pixel
        along x, with interpolated heights, leave no holes on steep slopes."""
        c, s = math.cos(roll), math.sin(roll)
        cx = self.w / 2.0
        ys, xs = np.nonzero(self.mask > 0.5)
        z = self.z
        right = np.minimum(xs + 1, self.w - 1)
        tx_all, ty_all, depth_all, src_all = [], [], [], []
        for k in range(3):
            f = (k + 0.5) / 3.0 - 0.5
            zk = z[ys, xs] * (1 - abs(f)) + np.where(f > 0, z[ys, right], z[ys, np.maximum(xs - 1, 0)]) * abs(f)
            x = xs + 0.5 + f - cx
            tx_all.append(np.floor(cx + x * c + zk * s).astype(np.int64))
            ty_all.append(ys)
            depth_all.append(-x * s + zk * c)
            src_all.append(np.arange(len(xs)))
        tx = np.concatenate(tx_all)
        ty = np.concatenate(ty_all)
        depth = np.concatenate(depth_all)
        src = np.concatenate(src_all)
        ok = (tx >= 0) & (tx < self.w)
        tx, ty, depth, src = tx[ok], ty[ok], depth[ok], src[ok]
        target = ty * self.w + tx
        order = np.lexsort((depth, target))
        target, src = target[order], src[order]
        last = np.ones(len(target), bool)
        last[:-1] = target[1:] != target[:-1]
        target, src = target[last], src[last]
        rgb = np.zeros((self.h * self.w, 3), np.float32)
        mask = np.zeros(self.h * self.w, np.float32)
        rgb[target] = col[ys[src], xs[src]]
        mask[target] = 1.0
        return rgb.reshape(self.h, self.w, 3), mask.reshape(self.h, self.w)

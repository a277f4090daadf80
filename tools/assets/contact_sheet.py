#!/usr/bin/python3
"""One picture of every image, animation frame and font in the data set, at true size on the
game's black background, read through resources.xml.

    tools/assets/contact_sheet.py [--data DIR] [--out FILE]
"""
import argparse
import os
import sys

import numpy as np
from PIL import Image, ImageDraw, ImageFont

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)

import datadef  # noqa: E402

WIDTH = 1400
GAP = 6
BACKGROUND = (2, 3, 8)
LABEL = ImageFont.truetype("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", 12)
TITLE = ImageFont.truetype("/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf", 18)
# The game draws these additively (extras engine, explosions, flames, shield, HUD context).
ADDITIVE_PREFIXES = ("extra", "crystal", "explosion", "engine", "shield")


def _load(path):
    return np.asarray(Image.open(path).convert("RGBA"), np.float32) / 255.0


class Sheet:
    def __init__(self):
        self.canvas = np.zeros((200, WIDTH, 3), np.float32)
        self.canvas[:] = np.array(BACKGROUND) / 255.0
        self.labels = []
        self.x, self.y, self.row_h = GAP, GAP, 0

    def _grow(self, bottom):
        if bottom > self.canvas.shape[0]:
            extra = np.zeros((max(bottom - self.canvas.shape[0], 800), WIDTH, 3), np.float32)
            extra[:] = np.array(BACKGROUND) / 255.0
            self.canvas = np.vstack([self.canvas, extra])

    def newline(self, space=GAP):
        self.x = GAP
        self.y += self.row_h + space
        self.row_h = 0

    def title(self, text):
        self.newline(GAP * 3)
        self.labels.append((GAP, self.y, text, TITLE, (150, 190, 255)))
        self.row_h = 24
        self.newline()

    def caption(self, text):
        self.labels.append((self.x, self.y, text, LABEL, (200, 200, 210)))
        self.row_h = max(self.row_h, 16)
        self.newline(0)

    def place(self, rgba, additive, label=None):
        h, w = rgba.shape[:2]
        if self.x + w > WIDTH - GAP:
            self.newline()
        label_h = 14 if label else 0
        self._grow(self.y + h + label_h + GAP)
        region = self.canvas[self.y:self.y + h, self.x:self.x + w]
        a = rgba[..., 3:]
        if additive:
            region[:] = np.clip(region + rgba[..., :3] * a, 0, 1)
        else:
            region[:] = rgba[..., :3] * a + region * (1 - a)
        if label:
            self.labels.append((self.x, self.y + h + 1, label, LABEL, (170, 170, 180)))
        self.x += int(max(w, LABEL.getlength(label) if label else 0)) + GAP
        self.row_h = max(self.row_h, h + label_h)

    def text_line(self, font, text):
        """Prints `text` with a bitmap font exactly as its description places the glyphs."""
        sheets = {p: _load(p) for p in font["images"]}
        width = sum(font["chars"].get(b, {"width": 0})["width"] + font["spacing"]
                    for b in text.encode("latin-1"))
        out = np.zeros((font["height"], max(width, 1), 4), np.float32)
        x = 0
        for b in text.encode("latin-1"):
            ch = font["chars"].get(b)
            if ch is None:
                x += font["spacing"]
                continue
            if ch["image"]:
                glyph = sheets[ch["image"]][ch["y"]:ch["y"] + ch["height"], ch["x"]:ch["x"] + ch["width"]]
                out[:glyph.shape[0], x:x + glyph.shape[1]] = np.maximum(out[:glyph.shape[0], x:x + glyph.shape[1]], glyph)
            x += ch["width"] + font["spacing"]
        self.place(out, False)

    def save(self, path):
        self.canvas = self.canvas[:self.y + self.row_h + GAP]
        im = Image.fromarray(np.round(self.canvas * 255).astype(np.uint8), "RGB")
        d = ImageDraw.Draw(im)
        for x, y, text, font, color in self.labels:
            d.text((x, y), text, font=font, fill=color)
        im.save(path, optimize=True)


def build(data_dir, out):
    definition = datadef.Definition(data_dir)
    sheet = Sheet()
    images = definition.bank("imagesGame", "images")
    animations = definition.bank("animationsGame", "animations")
    sheet.title("animationsGame (frames at true size; name, frame count, ms per frame)")
    shown = set()
    for name, anim in animations.items():
        frames = anim["frames"]
        delays = sorted({d for _, d in frames})
        timing = "chosen by the game" if delays[0] >= 1e6 else "/".join("%g" % d for d in delays) + " ms"
        sheet.caption("%s: %d frames, %s%s" % (name, len(frames), timing,
                                               ", loops" if anim["loop"] else ""))
        additive = name.startswith(ADDITIVE_PREFIXES)
        for i, (image, _) in enumerate(frames):
            shown.add(image)
            sheet.place(_load(images[image]["path"]), additive, str(i))
        sheet.newline()
    sheet.title("imagesGame (stills)")
    for name, info in images.items():
        if name not in shown:
            sheet.place(_load(info["path"]), False, name)
    sheet.title("imagesHud (drawn additively)")
    for name, info in definition.bank("imagesHud", "images").items():
        sheet.place(_load(info["path"]), True, name)
    sheet.title("imagesGui")
    for name, info in definition.bank("imagesGui", "images").items():
        sheet.place(_load(info["path"]), False, name)
    sheet.place(_load(os.path.join(data_dir, "images_gui", "icon.png")), False, "icon.png")
    sheet.title("fonts")
    ascii_ = "".join(chr(c) for c in range(32, 127))
    latin1 = "".join(chr(c) for c in range(160, 256))
    for font in definition.bank("fonts", "fonts"):
        sheet.caption("%s %d (line height %d)" % (font["family"], font["size"], font["height"]))
        for text in ["Stage 3 complete.  Bonus: 4250   G A M E   O V E R", ascii_[:48],
                     ascii_[48:], latin1[:48], latin1[48:]]:
            sheet.text_line(font, text)
            sheet.newline()
    sheet.save(out)


def main():
    root = os.path.join(HERE, "..", "..")
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--data", default=os.path.join(root, "data"))
    parser.add_argument("--out", default=os.path.join(root, "docs", "contact-sheet.png"))
    args = parser.parse_args()
    os.makedirs(os.path.dirname(os.path.abspath(args.out)), exist_ok=True)
    build(args.data, args.out)


if __name__ == "__main__":
    main()

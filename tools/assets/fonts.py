"""Bitmap fonts rendered from DejaVu: one glyph sheet and one "bitmapfont.xml" per font.

Every printable Latin-1 character is included (32..126 and 160..255). Glyph cells are as
high as the font's line (ascent plus descent) and as wide as the character's advance, laid
out in rows on a power-of-two sheet; the space and the no-break space are blank characters.
The print origin is the bottom of the cell (yHotSpot 0), so a line of text is centred on its
cell when the GUI centres it.
"""
import os

import numpy as np
from PIL import Image, ImageDraw, ImageFont

import render as R

DEJAVU = "/usr/share/fonts/truetype/dejavu/"
H_PADDING = 2
V_PADDING = 2
BLANKS = (32, 160)
CODES = [c for c in list(range(32, 127)) + list(range(160, 256)) if c not in BLANKS]

# (directory, family, size, pixels, face, shaded): the size is the font's name in the game, the
# pixels its rendered em. "Standard" 33 is the HUD, message and highscore font: the game's layouts
# put its lines 30 units apart and a name of 17 hyphens before a six-digit score within 230 units,
# which DejaVu Sans Bold meets at 20 pixels. "Title" and the others serve the GUI.
FONTS = [
    ("standard33", "Standard", 33, 20, "DejaVuSans-Bold.ttf", True),
    ("standard24", "Standard", 24, 24, "DejaVuSans-Bold.ttf", True),
    ("title30", "Title", 30, 30, "DejaVuSans-Bold.ttf", True),
    ("text20", "Text", 20, 20, "DejaVuSans.ttf", False),
    ("text16", "Text", 16, 16, "DejaVuSans.ttf", False),
]


def _pow2(n):
    p = 1
    while p < n:
        p *= 2
    return p


def _rows(cells, width):
    rows, row, x = [], [], 0
    for cell in cells:
        if x + cell[1] > width and row:
            rows.append(row)
            row, x = [], 0
        row.append(cell)
        x += cell[1] + H_PADDING
    rows.append(row)
    return rows


def _layout(font, height):
    """Glyph cells (code, advance width, left offset) wrapped into rows of a sheet no taller
    than twice its width."""
    cells = []
    for code in CODES:
        ch = bytes([code]).decode("latin-1")
        left, _, right, _ = font.getbbox(ch)
        shift = max(0, -left)
        cells.append((code, max(int(round(font.getlength(ch))), right) + shift, shift))
    total = sum(w + H_PADDING for _, w, _ in cells)
    width = _pow2(int((total * (height + V_PADDING)) ** 0.5))
    while True:
        rows = _rows(cells, width)
        sheet_h = _pow2(len(rows) * (height + V_PADDING))
        if sheet_h <= 2 * width:
            return width, sheet_h, rows
        width *= 2


def build(out_dir, dirname, family, size, pixels, face, shaded):
    """Writes the font's sheet and description into out_dir/dirname; returns the file names."""
    font = ImageFont.truetype(DEJAVU + face, pixels)
    ascent, descent = font.getmetrics()
    height = ascent + descent
    width, sheet_h, rows = _layout(font, height)
    coverage = Image.new("L", (width, sheet_h), 0)
    draw = ImageDraw.Draw(coverage)
    for index, row in enumerate(rows):
        y = (height + V_PADDING) * index
        x = 0
        for code, w, shift in row:
            draw.text((x + shift, y), bytes([code]).decode("latin-1"), font=font, fill=255)
            x += w + H_PADDING
    alpha = np.asarray(coverage, np.float32) / 255.0
    rgb = np.ones((sheet_h, width, 3), np.float32)
    if shaded:
        # A gentle fall from white to silver down each line; the game tints the glyphs.
        line = (np.arange(sheet_h) % (height + V_PADDING)) / float(height)
        rgb *= (1.0 - 0.2 * np.clip(line, 0, 1))[:, None, None]
    path = os.path.join(out_dir, dirname)
    os.makedirs(path, exist_ok=True)
    R.save(R.quantize(rgb, alpha), os.path.join(path, "glyphs.png"))

    space = int(round(font.getlength(" ")))
    lines = ['<?xml version="1.0" encoding="ISO-8859-1" ?>',
             '<bitmapfont name="%s" size="%d" height="%d" spacing="0" yHotSpot="0" hPadding="%d"'
             ' vPadding="%d">' % (family, size, height, H_PADDING, V_PADDING)]
    for code in BLANKS:
        lines.append('  <char char="%d" width="%d"/>' % (code, space))
    lines.append('  <image file="glyphs.png">')
    for index, row in enumerate(rows):
        lines.append('    <line index="%d">' % (index + 1))
        for code, w, _ in row:
            lines.append('      <char char="%d" width="%d"/>' % (code, w))
        lines.append('    </line>')
    lines.append('  </image>')
    lines.append('</bitmapfont>')
    with open(os.path.join(path, "bitmapfont.xml"), "w", encoding="ascii") as f:
        f.write("\n".join(lines) + "\n")
    return [os.path.join(dirname, "glyphs.png"), os.path.join(dirname, "bitmapfont.xml")]

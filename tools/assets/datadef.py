"""Reads resources.xml the way the game's banks do: "dir" attributes, loop elements and the
name substitutions of image, animation, font and sample banks."""
import os
import xml.etree.ElementTree as ET


class Loop:
    def __init__(self, var, value, digits):
        self.var, self.value, self.digits = var, value, digits

    def padded(self):
        return str(self.value).zfill(self.digits) if self.digits else str(self.value)


def substitute(text, loops, padded=True):
    for loop in loops:
        text = text.replace("[%s]" % loop.var, loop.padded() if padded else str(loop.value))
    return text


def expand(node, loops=()):
    """Children of `node` with loop elements unrolled: (element, active loops)."""
    for child in node:
        if not isinstance(child.tag, str):
            continue  # comments
        if child.tag != "loop":
            yield child, list(loops)
            continue
        var = child.get("var")
        start, stop = int(child.get("from", "0"), 0), int(child.get("to", "0"), 0)
        step, digits = int(child.get("step", "1"), 0), int(child.get("digits", "0"), 0)
        if var is None or step == 0 or (step > 0 and start >= stop) or (step < 0 and start <= stop):
            raise ValueError("loop the game would skip: %s" % ET.tostring(child)[:80])
        if (stop - start) % step:
            raise ValueError("loop %s never reaches its end" % var)
        for value in range(start, stop + step, step):
            yield from expand(child, list(loops) + [Loop(var, value, digits)])


class Definition:
    """Banks by name: images, animations, fonts and samples with resolved file paths."""

    def __init__(self, data_dir):
        self.root_dir = data_dir
        self.banks = {}
        root = ET.parse(os.path.join(data_dir, "resources.xml")).getroot()
        assert root.tag == "resources", root.tag
        base = data_dir + "/" + root.get("dir", "")
        for bank in root:
            if not isinstance(bank.tag, str):
                continue
            folder = base + bank.get("dir", "")
            reader = getattr(self, "_" + bank.tag)
            self.banks[bank.get("name")] = (bank.tag, reader(bank, folder))

    def bank(self, name, tag):
        kind, content = self.banks[name]
        assert kind == tag, "%s is a %s bank" % (name, kind)
        return content

    def _images(self, node, folder):
        out = {}
        for el, loops in expand(node):
            if el.tag != "image":
                continue
            filename = substitute(el.get("filename"), loops)
            name = substitute(el.get("name", el.get("filename")), loops)
            out[name] = {
                "path": folder + filename,
                "hot": (float(el.get("hotX", "0")), float(el.get("hotY", "0"))),
                "threshold": float(el.get("bitmaskThreshold", "-1")),
                "clamp": el.get("clamp") in ("1", "t", "true"),
            }
        return out

    def _animations(self, node, folder):
        out = {}
        for el, loops in expand(node):
            if el.tag != "animation":
                continue
            name = substitute(el.get("name"), loops, padded=False)
            delay = float(el.get("delay", "10"))
            frames = [(substitute(f.get("image"), loops + inner), float(f.get("delay", delay)))
                      for f, inner in expand(el) if f.tag == "frame"]
            out[name] = {"frames": frames, "delay": delay,
                          "loop": el.get("loop") in ("1", "t", "true"),
                          "imageBank": node.get("imageBank")}
        return out

    def _fonts(self, node, folder):
        out = []
        for el, _ in expand(node):
            if el.tag == "bitmapfont":
                out.append(read_font(folder + el.get("dir", "")))
        return out

    def _samples(self, node, folder):
        out = {}
        for el, _ in expand(node):
            if el.tag in ("sample", "stream"):
                out[el.get("name")] = {"path": folder + el.get("filename"),
                                       "streamed": el.tag == "stream",
                                       "loop": el.get("loop") in ("1", "t", "true")}
        return out

    def _inputEvaluator(self, node, folder):
        return node  # read by the game itself; kept for checks of its triggers

    def _gui(self, node, folder):
        return node


def read_font(font_dir):
    """A bitmap font: family, size, height, glyph placement per character code."""
    root = ET.parse(os.path.join(font_dir, "bitmapfont.xml")).getroot()
    assert root.tag == "bitmapfont"
    height = int(root.get("height"))
    hpad, vpad = int(root.get("hPadding", "0")), int(root.get("vPadding", "0"))
    font = {"dir": font_dir, "family": root.get("name"), "size": int(root.get("size")),
            "height": height, "spacing": int(root.get("spacing", "0")),
            "yHotSpot": int(root.get("yHotSpot", "0")), "chars": {}, "images": []}
    for el in root:
        if el.tag == "char":
            font["chars"][int(el.get("char"), 0)] = {"width": int(el.get("width", "0")),
                                                      "image": None}
        elif el.tag == "image":
            path = os.path.join(font_dir, el.get("file"))
            font["images"].append(path)
            for line in el:
                y = (height + vpad) * (int(line.get("index", "0"), 0) - 1)
                x = 0
                for ch in line:
                    w = int(ch.get("width", root.get("width", "0")))
                    font["chars"][int(ch.get("char"), 0)] = {
                        "width": w, "image": path, "x": x, "y": y,
                        "height": int(ch.get("height", height))}
                    x += w + hpad
    return font

"""Writes image files and the bank elements of resources.xml that name them."""
import os

import render as R


def _attrs(pairs):
    return "".join(' %s="%s"' % (k, v) for k, v in pairs if v is not None)


def _num(v):
    return ("%g" % v) if v is not None else None


class Bank:
    """One bank element of resources.xml, with its own folder under the data directory."""

    def __init__(self, tag, name, folder=None, extra=()):
        self.tag, self.name, self.folder = tag, name, folder
        self.extra = list(extra)
        self.lines = []

    def xml(self):
        head = "  <%s%s>" % (self.tag, _attrs([("name", self.name),
                                                ("dir", self.folder + "/" if self.folder else None)]
                                               + self.extra))
        return "\n".join([head] + ["    " + line for line in self.lines] + ["  </%s>" % self.tag])


class ImageBank(Bank):
    def __init__(self, out_dir, name, folder):
        super().__init__("images", name, folder)
        self.path = os.path.join(out_dir, folder)
        os.makedirs(self.path, exist_ok=True)
        self.files = []

    def _image_attrs(self, name, filename, hot, threshold, clamp):
        hot = hot or (None, None)
        return _attrs([("name", name), ("filename", filename), ("hotX", _num(hot[0])),
                       ("hotY", _num(hot[1])), ("bitmaskThreshold", _num(threshold)),
                       ("clamp", "true" if clamp else None)])

    def single(self, name, filename, rgba, hot=None, threshold=None, clamp=True):
        R.save(rgba, os.path.join(self.path, filename))
        self.files.append(filename)
        self.lines.append("<image%s/>" % self._image_attrs(name, filename, hot, threshold, clamp))

    def sequence(self, name, stem, frames, hot, threshold=None, clamp=True):
        """Frames named name_00, name_01, ... in files stem_00.png, ..., defined by one loop."""
        for i, rgba in enumerate(frames):
            filename = "%s_%02d.png" % (stem, i)
            R.save(rgba, os.path.join(self.path, filename))
            self.files.append(filename)
        self.lines.append('<loop var="i" from="0" to="%d" digits="2">' % (len(frames) - 1))
        self.lines.append("  <image%s/>" % self._image_attrs(name + "_[i]", stem + "_[i].png", hot,
                                                              threshold, clamp))
        self.lines.append("</loop>")


class AnimationBank(Bank):
    def __init__(self, name, image_bank):
        super().__init__("animations", name, extra=[("imageBank", image_bank)])

    def animation(self, name, frames_of, count, delay, loop, delays=None, comment=None):
        """Frames frames_of_00 ... of the image bank; `delays` overrides the delay per frame."""
        if comment:
            self.lines.append("<!-- %s -->" % comment)
        self.lines.append('<animation name="%s" delay="%s" loop="%s">'
                          % (name, _num(delay), "true" if loop else "false"))
        if delays:
            for i, d in enumerate(delays):
                self.lines.append('  <frame image="%s_%02d" delay="%s"/>' % (frames_of, i, _num(d)))
        else:
            self.lines.append('  <loop var="i" from="0" to="%d" digits="2">' % (count - 1))
            self.lines.append('    <frame image="%s_[i]"/>' % frames_of)
            self.lines.append("  </loop>")
        self.lines.append("</animation>")


class Verbatim:
    """A bank element kept as written."""

    def __init__(self, text):
        self.text = text.strip("\n")

    def xml(self):
        return "\n".join("  " + line if line else line for line in self.text.splitlines())


def write_resources(path, banks):
    with open(path, "w", encoding="ascii") as f:
        f.write('<?xml version="1.0" encoding="ISO-8859-1" ?>\n<resources>\n')
        f.write("\n".join(b.xml() for b in banks))
        f.write("\n</resources>\n")

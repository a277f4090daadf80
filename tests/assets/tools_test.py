"""The generators' own promises: glows give back their light, rendered passages do not
depend on when they start, and the definition reader expands loops as the game does."""
import os
import tempfile
import unittest

import support

import numpy as np

import datadef
import music
import render


class Glows(unittest.TestCase):
    def test_colour_times_alpha_gives_back_the_light(self):
        # Additive sprites show rgb x alpha; the generators hand over light that way.
        ys, xs = np.mgrid[0:64, 0:64] / 64.0
        light = np.stack([xs, ys * 0.5, xs * ys], axis=-1).astype(np.float32)
        rgba = render.finish_glow(light.repeat(render.SS, 0).repeat(render.SS, 1))
        shown = rgba[..., :3] / 255.0 * rgba[..., 3:] / 255.0
        self.assertLess(np.abs(shown - light).max(), 2.5 / 255)
        # Faint light stays below the collision threshold, bright light above it.
        self.assertTrue((rgba[..., 3][light.max(axis=-1) < 0.45] < 128).all())
        self.assertTrue((rgba[..., 3][light.max(axis=-1) > 0.55] > 128).all())

    def test_transparent_pixels_take_their_neighbours_colour(self):
        rgb = np.zeros((32, 32, 3), np.float32)
        rgb[..., 0] = 1.0
        alpha = np.zeros((32, 32), np.float32)
        alpha[8:24, 8:24] = 1.0
        out = render.quantize(rgb, alpha)
        self.assertEqual(out[..., 3].max(), 255)
        self.assertTrue((out[alpha == 0][:, 3] == 0).all())
        # Red right outside the square, so filtering at its edge does not darken it.
        self.assertTrue((out[6:26, 6, 0] == 255).all())


class Music(unittest.TestCase):
    def test_a_passage_sounds_the_same_whenever_it_starts(self):
        # The loop files rely on it: the third pass of a loop equals the second sample for
        # sample, tails and hall included (what the first pass leaves in the third lies
        # below -80 dB).
        section = music.Section("Am F", {"pad": "pp", "bass": "as", "arp": "ab", "piano": "pp",
                                         "drums": "mF", "crash": "x-"},
                                "A5:1 C6:1 E6:2 | F5:2 A5:1 r:1")
        piece = music.Piece("probe", 100, section, section, music.BAND)
        stream, intro, loop = piece.render()
        second = stream[intro:intro + loop]
        third = stream[intro + loop:intro + 2 * loop]
        self.assertEqual(intro, loop)
        self.assertLess(np.abs(second - third).max(), 1e-4)
        self.assertGreater(np.abs(second).max(), 0.1)

    def test_bars_must_add_up(self):
        self.assertEqual(music.melody("C4:2 r:1 E4:1", 1), [(0.0, 2.0, 60), (3.0, 1.0, 64)])
        with self.assertRaises(AssertionError):
            music.melody("C4:2 E4:1", 1)


class DefinitionReader(unittest.TestCase):
    def read(self, banks):
        with tempfile.TemporaryDirectory() as tmp:
            with open(os.path.join(tmp, "resources.xml"), "w") as f:
                f.write('<resources dir="d/">%s</resources>' % banks)
            return datadef.Definition(tmp)

    def test_loops_pad_file_and_frame_names_but_not_animation_names(self):
        data = self.read(
            '<images name="i" dir="img/"><loop var="x" from="1" to="2"><loop var="n" from="8" '
            'to="10" digits="2"><image name="s[x][n]" filename="s[n].png"/></loop></loop></images>'
            '<animations name="a" imageBank="i"><loop var="k" from="1" to="3" digits="2">'
            '<animation name="boom[k]"><frame image="b[k]"/></animation></loop></animations>')
        images = data.bank("i", "images")
        self.assertEqual(sorted(images), ["s108", "s109", "s110", "s208", "s209", "s210"])
        self.assertTrue(images["s209"]["path"].endswith("/d/img/s09.png"))
        anims = data.bank("a", "animations")
        self.assertEqual(sorted(anims), ["boom1", "boom2", "boom3"])
        self.assertEqual(anims["boom2"]["frames"], [("b02", 10.0)])

    def test_loops_the_game_would_skip_are_errors(self):
        for loop in ('from="2" to="2"', 'from="1" to="3" step="-1"', 'from="1" to="4" step="2"'):
            with self.subTest(loop=loop), self.assertRaises(ValueError):
                self.read('<images name="i"><loop var="v" %s><image name="a[v]" filename="a"/>'
                          '</loop></images>' % loop)


if __name__ == "__main__":
    unittest.main()

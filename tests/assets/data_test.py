"""The data set is complete and well-formed: every XML file parses, every file it names is
there, every name the game looks up exists with the frames, sizes and masks it needs."""
import glob
import os
import unittest
import xml.etree.ElementTree as ET

import support

import numpy as np
from PIL import Image

import datadef

GAME_ANIMATIONS = [
    "player1", "player2", "engine", "engineStutter", "shield", "asteroidSmall", "asteroidLarge",
    "crystal", "container_0", "container_1", "container_2", "extraFireRate", "extraLaserType",
    "extraSpeedup", "extraShield", "extraScore", "extraTimeWarp", "foeLeft", "foeRight",
    "explosionFast", "explosionSlow"]
# Animations that hit things, and so need a collision mask on every frame.
COLLIDING = {"player1", "player2", "shield", "asteroidSmall", "asteroidLarge", "crystal",
             "container_0", "container_1", "container_2", "extraFireRate", "extraLaserType",
             "extraSpeedup", "extraShield", "extraScore", "extraTimeWarp", "foeLeft", "foeRight"}
HUD = (["full", "shield"] + ["speed_%d" % n for n in range(1, 6)]
       + ["fire_%d_%d" % (n, m) for n in range(1, 6) for m in range(6)]
       + ["timewarp_1", "timewarp_2"])
LATIN1 = set(range(32, 127)) | set(range(160, 256))


def rgba(path):
    im = Image.open(path)
    return im.mode, np.asarray(im.convert("RGBA"))


def power_of_two(n):
    return n > 0 and n & (n - 1) == 0


class Definitions(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.data = datadef.Definition(support.DATA)

    def test_every_xml_file_parses(self):
        files = glob.glob(os.path.join(support.DATA, "**", "*.xml"), recursive=True)
        self.assertIn(os.path.join(support.DATA, "resources.xml"), files)
        for path in files:
            with self.subTest(path=path):
                ET.parse(path)

    def test_banks_have_the_types_the_game_checks(self):
        expected = {"fonts": "fonts", "imagesGame": "images", "animationsGame": "animations",
                    "imagesHud": "images", "imagesGui": "images", "sounds": "samples",
                    "music": "samples"}
        for name, tag in expected.items():
            with self.subTest(bank=name):
                self.assertEqual(self.data.banks[name][0], tag)

    def test_every_named_file_exists_as_rgba_png(self):
        for bank in ("imagesGame", "imagesHud", "imagesGui"):
            for name, info in self.data.bank(bank, "images").items():
                with self.subTest(image=name):
                    self.assertTrue(os.path.isfile(info["path"]), info["path"])
                    self.assertEqual(Image.open(info["path"]).format, "PNG")
                    self.assertEqual(Image.open(info["path"]).mode, "RGBA")
        for bank in ("sounds", "music"):
            for name, info in self.data.bank(bank, "samples").items():
                with self.subTest(sample=name):
                    self.assertTrue(os.path.isfile(info["path"]), info["path"])
        icon = os.path.join(support.DATA, "images_gui", "icon.png")
        self.assertEqual(rgba(icon)[1].shape, (32, 32, 4))

    def test_data_stays_small_and_credits_the_fonts(self):
        total = sum(os.path.getsize(p) for p in glob.glob(os.path.join(support.DATA, "**", "*"),
                                                          recursive=True) if os.path.isfile(p))
        self.assertLess(total, 20 * 1024 * 1024)
        with open(os.path.join(support.DATA, "CREDITS"), encoding="utf-8") as f:
            self.assertIn("DejaVu", f.read())


class GameImages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        data = datadef.Definition(support.DATA)
        cls.images = data.bank("imagesGame", "images")
        cls.animations = data.bank("animationsGame", "animations")

    def test_every_animation_the_game_uses_is_there(self):
        for name in GAME_ANIMATIONS:
            with self.subTest(animation=name):
                anim = self.animations[name]
                self.assertEqual(anim["imageBank"], "imagesGame")
                self.assertTrue(anim["frames"])
                for image, _ in anim["frames"]:
                    self.assertIn(image, self.images)
        for name in ("laserRayGreen", "laserRoundGreen", "laserRoundRed"):
            self.assertIn(name, self.images)

    def test_frame_counts_and_looping(self):
        # The game picks 11 banking frames (5 straight) and 12 thrust frames itself.
        for name, count in (("player1", 11), ("player2", 11), ("foeLeft", 12), ("foeRight", 12)):
            with self.subTest(animation=name):
                anim = self.animations[name]
                self.assertEqual(len(anim["frames"]), count)
                self.assertFalse(anim["loop"])
                self.assertGreaterEqual(min(d for _, d in anim["frames"]), 1e6)
        # Explosions end (the sprite is removed when they finish); the rest repeat.
        for name in GAME_ANIMATIONS:
            with self.subTest(animation=name):
                if name.startswith("explosion"):
                    self.assertFalse(self.animations[name]["loop"])
                elif name not in ("player1", "player2", "foeLeft", "foeRight"):
                    self.assertTrue(self.animations[name]["loop"])

    def test_frames_of_an_animation_share_size_and_hot_spot(self):
        for name, anim in self.animations.items():
            with self.subTest(animation=name):
                infos = [self.images[image] for image, _ in anim["frames"]]
                sizes = {Image.open(i["path"]).size for i in infos}
                self.assertEqual(len(sizes), 1)
                self.assertEqual(len({i["hot"] for i in infos}), 1)

    def test_sprites_are_centred_on_their_hot_spot_and_fit_their_canvas(self):
        # The flame hangs below the ship and is placed by its own hot spot.
        for name, anim in self.animations.items():
            for image, _ in anim["frames"]:
                info = self.images[image]
                _, pixels = rgba(info["path"])
                h, w = pixels.shape[:2]
                with self.subTest(image=image):
                    if not name.startswith("engine"):
                        self.assertEqual(info["hot"], (w / 2.0, h / 2.0))
                    alpha = pixels[..., 3]
                    border = np.concatenate([alpha[0], alpha[-1], alpha[:, 0], alpha[:, -1]])
                    self.assertLessEqual(int(border.max()), 24, "cut off at the canvas edge")

    def test_colliding_images_have_masks_matching_what_is_seen(self):
        names = [image for a in COLLIDING for image, _ in self.animations[a]["frames"]]
        names += ["laserRayGreen", "laserRoundGreen", "laserRoundRed"]
        for image in names:
            info = self.images[image]
            with self.subTest(image=image):
                self.assertTrue(0 < info["threshold"] < 1)
                _, pixels = rgba(info["path"])
                alpha = pixels[..., 3].astype(np.float32)
                solid = alpha / 256.0 > info["threshold"]
                self.assertGreater(solid.sum(), 20)
                # What shines brightly must be solid, and nothing solid may be invisible.
                light = pixels[..., :3].max(axis=-1) * (alpha / 255.0)
                self.assertFalse((light > 160)[~solid].any())
                self.assertGreater(light[solid].min(), 2)

    def test_effects_have_no_collision_masks(self):
        for name in ("engine", "engineStutter", "explosionFast", "explosionSlow"):
            for image, _ in self.animations[name]["frames"]:
                self.assertLess(self.images[image]["threshold"], 0)


class HudAndGui(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        data = datadef.Definition(support.DATA)
        cls.hud = data.bank("imagesHud", "images")
        cls.gui = data.bank("imagesGui", "images")

    def test_hud_pieces_overlay_full(self):
        full = self.hud["full"]
        full_px = rgba(full["path"])[1]
        for name in HUD:
            with self.subTest(image=name):
                info = self.hud[name]
                px = rgba(info["path"])[1]
                self.assertEqual(px.shape, full_px.shape)
                self.assertEqual(info["hot"], full["hot"])
                # Every piece lies within the dim backdrop "full".
                lit = px[..., 3] > 64
                self.assertTrue(lit.any())
                self.assertTrue((full_px[..., 3][lit] > 32).all())

    def test_logo_and_frames(self):
        self.assertIn("logo", self.gui)
        for frame in ("panel", "button", "buttonHot", "buttonDown", "field"):
            parts = {}
            for part in ("UpperLeft", "Upper", "UpperRight", "Left", "Center", "Right",
                         "LowerLeft", "Lower", "LowerRight"):
                info = self.gui[frame + part]
                parts[part] = rgba(info["path"])[1]
                # Tiled parts need a repeating texture.
                self.assertEqual(info["clamp"], part in ("UpperLeft", "UpperRight",
                                                         "LowerLeft", "LowerRight"))
            with self.subTest(frame=frame):
                # Edges repeat along their length without seams, the centre everywhere.
                self.assertTrue((parts["Upper"] == parts["Upper"][:, :1]).all())
                self.assertTrue((parts["Lower"] == parts["Lower"][:, :1]).all())
                self.assertTrue((parts["Left"] == parts["Left"][:1]).all())
                self.assertTrue((parts["Right"] == parts["Right"][:1]).all())
                self.assertTrue((parts["Center"] == parts["Center"][:1, :1]).all())
                for part, px in parts.items():
                    self.assertTrue(power_of_two(px.shape[0]) and power_of_two(px.shape[1]), part)


class Fonts(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.fonts = datadef.Definition(support.DATA).bank("fonts", "fonts")

    def test_standard_33_exists(self):
        self.assertIn(("Standard", 33), [(f["family"], f["size"]) for f in self.fonts])

    def test_every_printable_latin1_character_has_a_clean_glyph(self):
        for font in self.fonts:
            with self.subTest(font=font["dir"]):
                self.assertEqual(set(font["chars"]), LATIN1)
                sheets = {p: rgba(p)[1][..., 3] for p in font["images"]}
                for alpha in sheets.values():
                    self.assertTrue(power_of_two(alpha.shape[0]) and power_of_two(alpha.shape[1]))
                used = {p: np.zeros(a.shape, bool) for p, a in sheets.items()}
                for code, ch in font["chars"].items():
                    if code in (32, 160):
                        self.assertIsNone(ch["image"])
                        self.assertGreater(ch["width"], 0)
                        continue
                    y, x, h, w = ch["y"], ch["x"], ch["height"], ch["width"]
                    alpha = sheets[ch["image"]]
                    self.assertLessEqual(y + h, alpha.shape[0])
                    self.assertLessEqual(x + w, alpha.shape[1])
                    self.assertFalse(used[ch["image"]][y:y + h, x:x + w].any(), "cells overlap")
                    used[ch["image"]][y:y + h, x:x + w] = True
                    if code not in (173,):  # the soft hyphen has no ink
                        self.assertTrue(alpha[y:y + h, x:x + w].any(), "no glyph for %d" % code)
                # Nothing drawn outside the cells bleeds into a glyph.
                for path, alpha in sheets.items():
                    self.assertFalse(alpha[~used[path]].any())


if __name__ == "__main__":
    unittest.main()

"""Sounds and music decode, stay below full scale, match in loudness, and the music's loops
and intros join without a click."""
import unittest

import support

import numpy as np

import audio
import datadef

EFFECTS = ["explosion", "laser", "ping", "extra", "timewarp", "menu_move", "menu_click"]
PAIRS = ["title", "game_a", "game_b", "highscores", "gameover"]
WINDOW = int(0.1 * audio.RATE)


def seam_ok(before, after):
    """Whether the jump from `before` into `after`, in value and in slope, is no bigger than
    the ordinary sample-to-sample changes of the music on either side of the join."""
    x = np.concatenate([before[-WINDOW:], after[:WINDOW]])
    d1 = np.abs(np.diff(x, axis=0))
    d2 = np.abs(np.diff(x, 2, axis=0))
    i = WINDOW - 1  # d1[i] crosses the join, as do d2[i - 1] and d2[i]
    ordinary1 = np.percentile(np.delete(d1, i, axis=0), 99.5, axis=0)
    ordinary2 = np.percentile(np.delete(d2, [i - 1, i], axis=0), 99.5, axis=0)
    return bool((d1[i] <= ordinary1).all() and (d2[i - 1:i + 1] <= ordinary2).all())


class Banks(unittest.TestCase):
    def test_effects_are_cached_and_music_streamed(self):
        data = datadef.Definition(support.DATA)
        sounds = data.bank("sounds", "samples")
        for name in EFFECTS:
            self.assertFalse(sounds[name]["streamed"], name)
        music = data.bank("music", "samples")
        names = ["music_%s_%s" % (p, part) for p in PAIRS for part in ("intro", "loop")]
        self.assertEqual(sorted(music), sorted(names + ["music_death"]))
        for name, info in music.items():
            with self.subTest(piece=name):
                self.assertTrue(info["streamed"])
                self.assertEqual(info["loop"], name.endswith("_loop"))


class Music(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        data = datadef.Definition(support.DATA).bank("music", "samples")
        cls.pieces = {name: audio.decode_ogg(info["path"]) for name, info in data.items()}

    def test_loops_join_their_start_and_intros_lead_into_them(self):
        for pair in PAIRS:
            intro = self.pieces["music_%s_intro" % pair]
            loop = self.pieces["music_%s_loop" % pair]
            with self.subTest(piece=pair):
                self.assertEqual(intro.shape[1], 2)
                self.assertTrue(seam_ok(loop, loop), "loop end -> loop start")
                self.assertTrue(seam_ok(intro, loop), "intro end -> loop start")

    def test_a_cut_in_the_wrong_place_is_heard(self):
        # Rejoining a loop at arbitrary points must fail most of the time, or the check above
        # would prove nothing.
        loop = self.pieces["music_game_a_loop"]
        cuts = np.linspace(0.1, 0.9, 12) * len(loop)
        failed = sum(not seam_ok(loop[:int(c)], loop[int(c) + 1234:]) for c in cuts)
        self.assertGreaterEqual(failed, 9)

    def test_peaks_below_full_scale_and_levels_alike(self):
        levels = {}
        for name, x in self.pieces.items():
            with self.subTest(piece=name):
                self.assertLess(np.abs(x).max(), 0.98)
                self.assertGreater(len(x), 3 * audio.RATE)
                levels[name] = audio.loudness(x)
        middle = float(np.median(list(levels.values())))
        for name, level in levels.items():
            with self.subTest(piece=name):
                self.assertLess(abs(level - middle), 3.0, "%.1f dB against %.1f" % (level, middle))


class Effects(unittest.TestCase):
    def test_effects_are_short_audible_and_unclipped(self):
        sounds = datadef.Definition(support.DATA).bank("sounds", "samples")
        for name in EFFECTS:
            with self.subTest(effect=name):
                x = audio.decode_ogg(sounds[name]["path"])
                self.assertEqual(x.ndim, 1)
                self.assertLess(len(x), 2 * audio.RATE)
                self.assertLess(np.abs(x).max(), 0.98)
                self.assertGreater(audio.loudness(x), -30.0)
                # Sounds start and end quietly, so they cut in and out without clicks.
                self.assertLess(abs(x[0]), 0.05)
                self.assertLess(abs(x[-1]), 0.05)


if __name__ == "__main__":
    unittest.main()

#!/usr/bin/python3
"""Builds the game's whole data set: images, fonts, sounds, music and resources.xml.

    tools/assets/generate.py [--out DIR]

The output (by default data/ of the repository) is laid out as the game's data directory.
Everything comes from fixed seeds, so two runs give byte-identical files.
"""
import argparse
import glob
import multiprocessing
import os
import shutil
import sys
import time

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)

import bankxml  # noqa: E402
import fonts  # noqa: E402
import fx  # noqa: E402
import gui  # noqa: E402
import guidef  # noqa: E402
import hud  # noqa: E402
import music  # noqa: E402
import objects  # noqa: E402
import sfx  # noqa: E402
import ships  # noqa: E402

SOLID = 0.5  # alpha above which a pixel counts for collisions
# The game picks these frames itself (banking, thrust); time must never move them on.
HELD = 1e9


def centre(frames):
    h, w = frames[0].shape[:2]
    return (w / 2.0, h / 2.0)


def _snake(name):
    return "".join("_" + c.lower() if c.isupper() else c for c in name)


def build_game_images(out):
    images = bankxml.ImageBank(out, "imagesGame", "images_game")
    anims = bankxml.AnimationBank("animationsGame", "imagesGame")

    def sequence(name, frames, delay, loop, threshold=SOLID, hot=None, delays=None, comment=None):
        images.sequence(name, _snake(name), frames, hot or centre(frames), threshold)
        anims.animation(name, name, len(frames), delay, loop, delays, comment)
        return frames

    held = "frames chosen by the game; the long delay keeps them from advancing"
    sequence("player1", ships.bank_frames(ships.player1()), HELD, False, comment=held)
    sequence("player2", ships.bank_frames(ships.player2()), HELD, False, comment=held)
    sequence("engine", fx.engine_frames(), 40, True, threshold=None, hot=fx.FLAME_HOT)
    sequence("engineStutter", fx.stutter_frames(), 60, True, threshold=None,
             hot=fx.FLAME_HOT, delays=[70, 40, 110, 50, 80, 40, 120, 90, 50, 40, 70, 60])
    sequence("shield", fx.shield_frames(), 60, True)
    sequence("asteroidSmall", objects.asteroid_small(), 50, True)
    sequence("asteroidLarge", objects.asteroid_large(), 75, True)
    crystal = objects.crystal_frames()
    sequence("crystal", crystal, 70, True)
    anims.animation("extraScore", "crystal", len(crystal), 70, True)
    for i, frames in enumerate(objects.containers()):
        sequence("container_%d" % i, frames, 60, True)
    for name, frames in objects.extras().items():
        sequence(name, frames, 60, True)
    for name, facing_right in (("foeLeft", True), ("foeRight", False)):
        sequence(name, ships.pirate_frames(facing_right), HELD, False, comment=held)
    sequence("explosionFast", fx.explosion_fast(), 40, False, threshold=None)
    sequence("explosionSlow", fx.explosion_slow(), 55, False, threshold=None)

    green = ((0.85, 1.0, 0.85), (0.2, 1.0, 0.3))
    ray = fx.laser_ray(*green)
    images.single("laserRayGreen", "laser_ray_green.png", ray, centre([ray]), SOLID)
    ball = fx.laser_round(*green)
    images.single("laserRoundGreen", "laser_round_green.png", ball, centre([ball]), SOLID)
    red = fx.laser_round((1.0, 0.9, 0.8), (1.0, 0.15, 0.1))
    images.single("laserRoundRed", "laser_round_red.png", red, centre([red]), SOLID)
    return images, anims


def build_hud_images(out):
    bank = bankxml.ImageBank(out, "imagesHud", "images_hud")
    for name, rgba in hud.hud_images().items():
        bank.single(name, name + ".png", rgba, hud.HOTSPOT)
    return bank


def build_gui_images(out):
    bank = bankxml.ImageBank(out, "imagesGui", "images_gui")
    bank.single("logo", "logo.png", gui.logo())
    for name, rgba in gui.frames().items():
        tiled = not name.endswith(("UpperLeft", "UpperRight", "LowerLeft", "LowerRight"))
        # Tiled parts rely on the texture repeating.
        bank.single(name, _snake(name) + ".png", rgba, clamp=not tiled)
    bank.single("knob", "knob.png", gui.knob(False))
    bank.single("knobHot", "knob_hot.png", gui.knob(True))
    bank.single("checkOff", "check_off.png", gui.checkbox(False))
    bank.single("checkOn", "check_on.png", gui.checkbox(True))
    bank.single("checkOffHot", "check_off_hot.png", gui.checkbox(False, hot=True))
    bank.single("checkOnHot", "check_on_hot.png", gui.checkbox(True, hot=True))
    bank.single("arrowDown", "arrow_down.png", gui.arrow("Down"))
    bank.single("arrowRight", "arrow_right.png", gui.arrow("Right"))
    bank.single("cursor", "cursor.png", gui.cursor(), hot=(2, 2))
    # The window icon is read straight from its file, not through the bank.
    ship = ships.player1().render()
    bankxml.R.save(gui.icon(ship), os.path.join(bank.path, "icon.png"))
    return bank


def build_fonts(out):
    bank = bankxml.Bank("fonts", "fonts", "fonts")
    for dirname, family, size, pixels, face, shaded in fonts.FONTS:
        fonts.build(os.path.join(out, "fonts"), dirname, family, size, pixels, face, shaded)
        bank.lines.append('<bitmapfont dir="%s/"/>' % dirname)
    return bank


def build_sounds(out):
    bank = bankxml.Bank("samples", "sounds", "sounds")
    for name, filename, priority in sfx.build(os.path.join(out, "sounds")):
        # Effects are short: decoded once into memory.
        bank.lines.append('<sample name="%s" filename="%s" priority="%d"/>' % (name, filename, priority))
    return bank


def build_music_piece(out, make):
    return music.export(make(), os.path.join(out, "music"))


def music_bank(files):
    bank = bankxml.Bank("samples", "music", "music")
    for filename in files:
        name = filename[:-len(".ogg")]
        # Music is decoded while it plays; loops repeat until the game moves on.
        loop = ' loop="true"' if name.endswith("_loop") else ""
        bank.lines.append('<stream name="%s" filename="%s"%s/>' % (name, filename, loop))
    return bank


def _run(job):
    func, args = job
    return func(*args)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out", default=os.path.join(HERE, "..", "..", "data"),
                        help="data directory to (re)build")
    parser.add_argument("--jobs", type=int, default=2, help="worker processes")
    args = parser.parse_args()
    out = os.path.abspath(args.out)
    for sub in ("images_game", "images_hud", "images_gui", "fonts", "sounds", "music"):
        shutil.rmtree(os.path.join(out, sub), ignore_errors=True)
    os.makedirs(os.path.join(out, "music"), exist_ok=True)
    start = time.time()
    # Independent jobs, heaviest first; each writes its own files and returns bank elements.
    jobs = [(build_game_images, (out,))]
    jobs += [(build_music_piece, (out, make)) for make in music.PIECES]
    jobs += [(build_hud_images, (out,)), (build_gui_images, (out,)), (build_fonts, (out,)),
             (build_sounds, (out,))]
    if args.jobs > 1:
        with multiprocessing.Pool(args.jobs) as pool:
            results = pool.map(_run, jobs, chunksize=1)
    else:
        results = [_run(job) for job in jobs]
    (game, anims), pieces = results[0], results[1:1 + len(music.PIECES)]
    hud_bank, gui_bank, font_bank, sound_bank = results[1 + len(music.PIECES):]
    banks = [font_bank, game, anims, hud_bank, gui_bank, sound_bank,
             music_bank([f for files in pieces for f in files])]
    # Banks written by hand (GUI, input definitions) are kept as XML fragments beside this
    # script and copied in after the generated ones.
    for path in sorted(glob.glob(os.path.join(HERE, "banks", "*.xml"))):
        with open(path, encoding="ascii") as f:
            banks.append(bankxml.Verbatim(f.read()))
    banks.append(guidef.Bank(os.path.join(out, "fonts")))
    bankxml.write_resources(os.path.join(out, "resources.xml"), banks)
    shutil.copy(os.path.join(HERE, "CREDITS"), os.path.join(out, "CREDITS"))
    print("assets built in %.1f s" % (time.time() - start))


if __name__ == "__main__":
    main()

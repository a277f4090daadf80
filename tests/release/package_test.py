"""The Debian package as a player and a packager meet it: a release build of its own, packed
with cpack, checked by lintian, appstreamcli, desktop-file-validate and man, installed with dpkg
into a throwaway root (the build's NORVANE_FS_ROOT), run as the user nobody under Xvfb, then
removed and purged."""
import glob
import grp
import os
import pwd
import re
import shutil
import stat
import subprocess
import sys
import tempfile
import time
import unittest
import xml.etree.ElementTree as ET

try:
    from PIL import Image, ImageStat
except ImportError:
    # Another python3 earlier on PATH (a per-user install) lacks Debian's modules.
    if sys.executable != "/usr/bin/python3" and os.path.exists("/usr/bin/python3"):
        os.execv("/usr/bin/python3", ["/usr/bin/python3"] + sys.argv)
    raise

REPO = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
OUT = os.path.join(os.environ.get("VANTORIX_BUILD_DIR", os.path.join(REPO, "build")), "tests",
                   "release")
BUILD = os.path.join(OUT, "build")  # kept between runs, so a second run builds only what changed
ROOT = os.path.join(OUT, "root")
ICON_SIZES = (16, 32, 48, 64, 128, 256, 512)
MULTIARCH = subprocess.run(["dpkg-architecture", "-qDEB_HOST_MULTIARCH"], capture_output=True,
                           text=True).stdout.strip()
CLASSIC_SDL = "/usr/lib/%s/libSDL-1.2.so.0" % MULTIARCH
COMPAT_SDL = "/usr/lib/%s/sdl12-compat" % MULTIARCH


def run(*command, **kwargs):
    result = subprocess.run(command, capture_output=True, text=True, **kwargs)
    if result.returncode != 0:
        raise AssertionError("%s failed:\n%s%s" % (" ".join(command), result.stdout,
                                                    result.stderr))
    return result.stdout


_package = []


def package():
    """Builds and packs the release once for every test: the .deb and its unpacked tree."""
    if not _package:
        run("cmake", "-S", REPO, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Release", "-DNORVANE_TESTS=OFF",
            "-DNORVANE_TOOLS=OFF", "-DNORVANE_FS_ROOT=" + ROOT)
        run("cmake", "--build", BUILD, "-j%d" % os.cpu_count())
        packages = os.path.join(OUT, "package")
        shutil.rmtree(packages, ignore_errors=True)
        run("cpack", "-G", "DEB", "-B", packages, cwd=BUILD)
        deb = glob.glob(os.path.join(packages, "vantorix_*.deb"))[0]
        run("dpkg-deb", "-x", deb, os.path.join(packages, "tree"))
        _package.extend([deb, os.path.join(packages, "tree")])
    return _package


def read(path, binary=False):
    with open(path, "rb" if binary else "r") as f:
        return f.read()


def mode(path):
    info = os.lstat(path)
    return stat.S_IMODE(info.st_mode), pwd.getpwuid(info.st_uid).pw_name, \
        grp.getgrgid(info.st_gid).gr_name


class Package(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.deb, cls.tree = package()
        cls.app_id = re.search(r"^VANTORIX_APP_ID:\w+=(.*)$",
                               read(os.path.join(BUILD, "CMakeCache.txt")), re.M).group(1)
        cls.files = set(run("dpkg-deb", "-c", cls.deb).splitlines())

    def field(self, name):
        return run("dpkg-deb", "-f", self.deb, name).strip()

    def test_control_fields_and_layout(self):
        self.assertEqual(self.field("Package"), "vantorix")
        self.assertEqual(self.field("Section"), "games")
        # From the libraries the program links, not a hand-kept list.
        depends = self.field("Depends")
        for library in ("libsdl1.2debian", "libopenal1", "libvorbisfile3", "libexpat1",
                        "libpng16-16", "libglu1-mesa", "libsdl-image1.2"):
            self.assertIn(library, depends)
        expected = ["usr/games/vantorix", "usr/share/games/vantorix/resources.xml",
                    "usr/share/applications/%s.desktop" % self.app_id,
                    "usr/share/metainfo/%s.metainfo.xml" % self.app_id,
                    "usr/share/man/man6/vantorix.6.gz",
                    "usr/share/doc/vantorix/copyright", "usr/share/doc/vantorix/changelog.gz"]
        expected += ["usr/share/icons/hicolor/%dx%d/apps/vantorix.png" % (n, n) for n in ICON_SIZES]
        for path in expected:
            self.assertTrue(os.path.isfile(os.path.join(self.tree, path)), path)
        for line in self.files:
            permissions, owner, path = line.split()[0], line.split()[1], line.split()[-1]
            self.assertEqual(owner, "root/root", path)
            # A setgid bit in the archive would be setgid root: the postinst sets it, for games.
            self.assertNotIn("s", permissions, path)
            self.assertFalse(path.startswith("./var/"), "the state directory belongs to postinst")

    def test_plain_install_makes_the_same_layout_and_the_shared_state(self):
        destdir = os.path.join(OUT, "destdir")
        shutil.rmtree(destdir, ignore_errors=True)
        run("cmake", "--install", BUILD, "--prefix", "/usr",
            env=dict(os.environ, DESTDIR=destdir))
        installed = sorted(os.path.relpath(os.path.join(d, f), destdir)
                           for d, _, files in os.walk(os.path.join(destdir, "usr")) for f in files)
        packaged = sorted(os.path.relpath(os.path.join(d, f), self.tree)
                          for d, _, files in os.walk(self.tree) for f in files)
        self.assertEqual(installed, packaged)
        if os.getuid() != 0:
            return
        state = destdir + ROOT + "/var/games/vantorix"
        self.assertEqual(mode(state), (0o2775, "root", "games"))
        program = os.path.join(destdir, "usr", "games", "vantorix")
        self.assertEqual(mode(program), (0o2755, "root", "games"))

    def test_lintian_finds_no_errors(self):
        result = subprocess.run(["lintian", "--tag-display-limit", "0", self.deb],
                                capture_output=True, text=True)
        tags = result.stdout.splitlines()
        sys.stderr.write("lintian:\n  " + "\n  ".join(tags) + "\n")
        self.assertEqual([t for t in tags if t.startswith("E:")], [])

    def test_desktop_files_and_manual_are_valid(self):
        share = os.path.join(self.tree, "usr", "share")
        run("desktop-file-validate", os.path.join(share, "applications", self.app_id + ".desktop"))
        metainfo = os.path.join(share, "metainfo", self.app_id + ".metainfo.xml")
        result = subprocess.run(["appstreamcli", "validate", "--no-net", metainfo],
                                capture_output=True, text=True)
        self.assertEqual(result.returncode, 0, result.stdout)
        text = read(metainfo)
        for needed in ("<control>keyboard</control>", "<control>gamepad</control>",
                       "<binary>vantorix</binary>", "<screenshot type=\"default\">",
                       "content_rating type=\"oars-1.1\""):
            self.assertIn(needed, text)
        manual = os.path.join(share, "man", "man6", "vantorix.6.gz")
        result = subprocess.run(["man", "--warnings", "-l", manual], capture_output=True,
                                text=True, env=dict(os.environ, MANWIDTH="80"))
        self.assertEqual(result.stderr, "")
        for section in ("OPTIONS", "CONTROLS", "FILES"):
            self.assertIn(section, result.stdout)
        for path in ("/var/games/vantorix/highscores.xml", "~/.vantorix/settings.xml"):
            self.assertIn(path, result.stdout)
        for n in ICON_SIZES:
            header = read(os.path.join(share, "icons", "hicolor", "%dx%d" % (n, n), "apps",
                                       "vantorix.png"), binary=True)[:26]
            self.assertEqual(header[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual((int.from_bytes(header[16:20], "big"),
                              int.from_bytes(header[20:24], "big")), (n, n))
            self.assertEqual(header[25], 6, "RGBA")


class Display:
    """An Xvfb of its own, open to every user, so the game can run as nobody."""

    def __enter__(self):
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", "1", "-ac", "-nolisten", "tcp", "-screen", "0", "1024x768x24"],
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.name = ":" + self.server.stdout.readline().strip()
        return self

    def __exit__(self, *exc):
        self.server.terminate()
        self.server.wait()
        self.server.stdout.close()


class Player:
    """Types into the game and watches its title through the game's own screenshots: the title
    menu fades its logo in while the images load, so a full logo means a loaded title menu."""

    def __init__(self, display, work):
        self.env = dict(os.environ, DISPLAY=display.name, ALSOFT_DRIVERS="null")
        self.shot = os.path.join(work, "screenshot.png")
        logo = Image.open(os.path.join(REPO, "data", "images_gui", "logo.png")).convert("RGBA")
        black = Image.new("RGBA", logo.size, (0, 0, 0, 255))
        self.logo = sum(ImageStat.Stat(Image.alpha_composite(black, logo).convert("L")).mean)
        x = (800 - logo.width) // 2
        self.box = (x, 10, x + logo.width, 10 + logo.height)  # below the window's top edge

    def keys(self, *keys, pause=0.3):
        """Types `keys`, each a letter for press (k), down (D) or up (U) and an X key name."""
        for key in keys:
            run("xdotool", {"k": "key", "D": "keydown", "U": "keyup"}[key[0]], key[1:],
                env=self.env)
            time.sleep(pause)

    def title_shown(self):
        if os.path.exists(self.shot):
            os.remove(self.shot)
        self.keys("kF12")
        for _ in range(50):
            if os.path.exists(self.shot):
                screen = Image.open(self.shot).convert("L").crop(self.box)
                return sum(ImageStat.Stat(screen).mean) > 0.95 * self.logo
            time.sleep(0.1)
        return False

    def until(self, shown, key=None, tries=1, looks=3):
        """Presses `key` (if any) until the title is shown or gone, as `shown` asks, looking
        `looks` times after each press; False if it never came."""
        for _ in range(tries):
            if key:
                self.keys("k" + key, pause=1)
            for _ in range(looks):
                if self.title_shown() == shown:
                    return True
                time.sleep(0.5)
        return False


class Installed(unittest.TestCase):
    """Install, play as nobody, remove, purge: in the throwaway root."""

    @classmethod
    def setUpClass(cls):
        if os.getuid() != 0:
            raise unittest.SkipTest("installs as root")
        cls.deb = package()[0]
        # While the game is being finished: run it once the program opens its title menu.
        sources = "".join(read(path) for path in glob.glob(
            os.path.join(REPO, "vantorix", "src", "*.cpp")))
        cls.can_run = re.search(r"\bnew Menu\b", sources) is not None
        cls.user = pwd.getpwnam("nobody")
        cls.games = grp.getgrnam("games").gr_gid

    def dpkg(self, *args):
        return run("dpkg", "--root=" + ROOT, "--force-script-chrootless", "--force-depends", *args)

    def path(self, absolute):
        return ROOT + absolute

    def play(self, display, library_path=None, short_game=False):
        """Starts the installed game as nobody in a working directory of its own, plays a short
        game if asked, quits from the title menu and returns the process's group ids while it
        ran, the SDL library it loaded and the working directory."""
        home = self.path(self.user.pw_dir)
        os.makedirs(home, exist_ok=True)
        os.chown(home, self.user.pw_uid, self.user.pw_gid)
        work = tempfile.mkdtemp(dir=OUT)
        os.chown(work, self.user.pw_uid, self.user.pw_gid)
        program = [self.path("/usr/games/vantorix")]
        if library_path:
            # Through the loader, as a setgid program ignores LD_LIBRARY_PATH.
            program = ["/lib64/ld-linux-x86-64.so.2", "--library-path", library_path] + program
        player = Player(display, work)
        log = open(os.path.join(work, "log"), "w+")
        game = subprocess.Popen(
            ["setpriv", "--reuid=%d" % self.user.pw_uid, "--regid=%d" % self.user.pw_gid,
             "--clear-groups", "--"] + program,
            cwd=work, env=player.env, stdout=log, stderr=subprocess.STDOUT,
            preexec_fn=lambda: os.umask(0o022))
        try:
            window = run("xdotool", "search", "--sync", "--onlyvisible", "--name", "Vantorix",
                         env=player.env, timeout=60).split()[0]
            with open("/proc/%d/status" % game.pid) as status:
                gids = [int(g) for g in re.search(r"^Gid:\s+(.*)$", status.read(),
                                                  re.M).group(1).split()]
            with open("/proc/%d/maps" % game.pid) as maps:
                sdl = sorted({line.split()[-1] for line in maps if "libSDL-1.2" in line})
            run("xdotool", "windowfocus", "--sync", window, env=player.env)
            # Back during loading would quit without asking.
            self.assertTrue(player.until(True, looks=120), "the title menu never finished loading")
            if short_game:
                # Mode A from the focused first button (a press while loading goes unheard).
                self.assertTrue(player.until(False, "Return", tries=5), "no game started")
                player.keys("Dspace", "DLeft", pause=1)
                player.keys("ULeft", "DRight", pause=1)
                player.keys("URight", "kF12", "Uspace")
                # Unless an asteroid has ended the game already, pause and leave by the last
                # button of the in-game menu: the ship explodes. Either way the game over saves
                # the tables, and back then returns to the title (with a ship alive it pauses).
                scores = self.path("/var/games/vantorix/highscores.xml")
                if not os.path.exists(scores):
                    player.keys("kp", "kDown", "kDown", "kDown", "kReturn", pause=1)
                for _ in range(60):
                    if os.path.exists(scores):
                        break
                    time.sleep(0.5)
                self.assertTrue(player.until(True, "Escape", looks=20), "no way back to the title")
            player.keys("kEscape", "kReturn")
            game.wait(timeout=60)
        finally:
            if game.poll() is None:
                game.kill()
                game.wait()
            log.seek(0)
            output = log.read()
            log.close()
        self.assertEqual(game.returncode, 0, output)
        return gids, sdl, work

    def run_game(self, state):
        """Runs the installed game on each SDL library and checks what it wrote, and how."""
        with Display() as display:
            gids, sdl, work = self.play(display, short_game=True)
            nogroup = self.user.pw_gid
            # real, effective, saved, file system: the group right dropped at start
            self.assertEqual(gids, [nogroup, nogroup, self.games, nogroup])
            self.assertEqual(sdl, [os.path.realpath(CLASSIC_SDL)])
            # Leaving a game saves the tables: with the group, replacing the file.
            scores = os.path.join(state, "highscores.xml")
            self.assertEqual(mode(scores), (0o664, "nobody", "games"))
            tables = ET.parse(scores).getroot()
            self.assertEqual([(t.tag, len(t)) for t in tables],
                             [("singleA", 10), ("singleB", 10), ("multi", 10)])
            self.assertEqual(mode(os.path.join(work, "screenshot.png")),
                             (0o644, "nobody", "nogroup"))
            _, sdl, _ = self.play(display, COMPAT_SDL)
            self.assertEqual(sdl, [os.path.realpath(COMPAT_SDL + "/libSDL-1.2.so.0")])
        settings = self.path(self.user.pw_dir + "/.vantorix/settings.xml")
        self.assertEqual(mode(settings), (0o644, "nobody", "nogroup"))
        self.assertEqual(sorted(os.listdir(state)), ["highscores.xml"])

    def test_install_play_remove_purge(self):
        shutil.rmtree(ROOT, ignore_errors=True)
        for directory in ("info", "updates", "triggers"):
            os.makedirs(self.path("/var/lib/dpkg/" + directory), exist_ok=True)
        open(self.path("/var/lib/dpkg/status"), "a").close()
        self.dpkg("--install", self.deb)

        program = self.path("/usr/games/vantorix")
        state = self.path("/var/games/vantorix")
        self.assertEqual(mode(state), (0o2775, "root", "games"))
        self.assertEqual(mode(program), (0o2755, "root", "games"))
        if self.can_run:
            self.run_game(state)
        packaged = [self.path(line.split()[-1][1:]) for line in
                    run("dpkg-deb", "-c", self.deb).splitlines() if not line.startswith("d")]
        self.dpkg("--remove", "vantorix")
        self.assertEqual([p for p in packaged if os.path.lexists(p)], [])
        self.assertTrue(os.path.isdir(state), "remove keeps the highscores")
        self.dpkg("--purge", "vantorix")
        self.assertFalse(os.path.lexists(state))
        # Nothing is left but dpkg's records and the player's own files.
        home = self.path(self.user.pw_dir)
        left = sorted(os.path.join(d, f) for d, _, files in os.walk(ROOT) for f in files
                      if not d.startswith((self.path("/var/lib/dpkg"), home)))
        self.assertEqual(left, [])
        if self.can_run:
            settings = os.path.join(home, ".vantorix", "settings.xml")
            self.assertTrue(os.path.exists(settings), "the player's own files stay")


if __name__ == "__main__":
    unittest.main()

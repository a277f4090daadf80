"""The manual page's and the README's controls are the ones the game starts with: the keys they
name for each action are the default bindings of the input definitions in data/resources.xml."""
import os
import re
import subprocess
import unittest
import xml.etree.ElementTree as ET

REPO = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))

NAMES = {"space": "Space", "p": "P", "pause": "Pause", "f11": "F11", "f12": "F12",
         "printscreen": "Print Screen", "esc": "Escape", "return": "Return"}
SIDES = {"l": "Left", "r": "Right"}
ACTIONS = {"fire": "fire", "shield": "shield", "timewarp": "time warp"}


def label(keys):
    """How the manual names a set of keys: a left and right pair is one key, cursor keys and
    W A S D are one group."""
    keys = [k for k in keys if k != "enter"]  # keypad Enter goes unmentioned
    out = []
    for key in keys:
        if key in ("left", "right", "up", "down"):
            name = "Cursor keys"
        elif key in ("a", "d", "w", "s"):
            name = "W, A, S, D"
        elif key[0] in SIDES and key[1:] in ("ctrl", "shift", "alt"):
            side, mod = SIDES[key[0]], key[1:].capitalize()
            both = ("l" + key[1:]) in keys and ("r" + key[1:]) in keys
            name = mod if both else "%s %s" % (side, mod)
        else:
            name = NAMES[key]
        if name not in out:
            out.append(name)
    return ", ".join(out)


def bindings():
    root = ET.parse(os.path.join(REPO, "data", "resources.xml")).getroot()
    result = {}
    for evaluator in root.iter("inputEvaluator"):
        result[evaluator.get("name")] = {
            t.get("name"): [k.get("key") for k in t.iter("keyTranslator")]
            for t in list(evaluator.iter("trigger")) + list(evaluator.iter("axis"))}
    return result


def manual():
    text = subprocess.run(["man", "-l", os.path.join(REPO, "packaging", "vantorix.6")],
                          capture_output=True, text=True, env=dict(os.environ, MANWIDTH="300"),
                          check=True).stdout
    return re.sub(r"\s+", " ", text)


class Controls(unittest.TestCase):
    def test_manual_names_the_default_keys(self):
        keys, text = bindings(), manual()
        single = keys["evaluatorGamePlayer"]
        self.assertIn("%s steer" % label(single["x"] + single["y"]), text)
        for trigger, action in ACTIONS.items():
            self.assertIn("%s %s" % (label(single[trigger]), action), text)
        for player in (0, 1):
            multi = keys["evaluatorGamePlayerMulti[%d]" % player]
            actions = ", ".join("%s %s" % (label(multi[t]), a) for t, a in ACTIONS.items())
            line = "Player %d %s, %s" % (player + 1, label(multi["x"] + multi["y"]), actions)
            self.assertIn(line, text)
        game = keys["evaluatorGameCore"]
        self.assertIn("%s pause" % label(game["pause"]), text)
        core = keys["evaluatorCore"]
        self.assertIn("%s full screen" % label(core["fullscreen"]), text)
        self.assertIn("%s save a screenshot" % label(core["screenshot"]), text)
        self.assertIn("%s go back" % label(keys["evaluatorMenu"]["back"]), text)

    def test_readme_table_names_the_default_keys(self):
        keys = bindings()
        players = [keys["evaluatorGamePlayer"], keys["evaluatorGamePlayerMulti[0]"],
                   keys["evaluatorGamePlayerMulti[1]"]]
        readme = open(os.path.join(REPO, "README.md")).read()
        rows = [("steer", [label(p["x"] + p["y"]).replace("Cursor", "cursor") for p in players])]
        rows += [(action, [label(p[trigger]) for p in players])
                 for trigger, action in ACTIONS.items()]
        for action, labels in rows:
            self.assertIn("| %s | %s |" % (action, " | ".join(labels)), readme)


if __name__ == "__main__":
    unittest.main()

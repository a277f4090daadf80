"""The GUI definition: its styles, the triggers its widgets fire, and every panel of the menus and
dialogs, laid out by one set of spacing rules.

Panels are written top-down here and turned into the GUI's bottom-up coordinates on output. The
game centres every panel itself, so only their sizes matter. Every caption is measured with the
font that draws it and must fit its widget.
"""
import os
from xml.sax.saxutils import quoteattr

import datadef


PAD = 26        # inside a panel's frame
BUTTON_H = 32
ROW_GAP = 24    # between framed rows: their frames reach 8 pixels beyond them
TEXT_GAP = 8    # after a line of text
CHECK_H = 20    # a checkbox is its box, drawn left of it, and its caption
FRAME = 16      # the panel frame drawn outside a panel

# The window below the logo, where the title menu's panels are centred (800 x 600 window,
# 144-pixel logo, 10 pixels above it).
MENU_AREA_H = 600 - 144 - 10

# Trigger codes the game's states act on.
TRIGGERS = [
    # name, code, data, dataString, description
    ("back", 1, 0, None, "Back"),
    ("confirm", 2, 0, None, "Confirm"),
    ("fullscreen", 3, 0, None, "Full screen"),
    ("startSingleA", 100, 0, None, "Single player, mode A"),
    ("startSingleB", 101, 0, None, "Single player, mode B"),
    ("startMulti", 102, 0, None, "Two players"),
    ("settings", 103, 0, None, "Settings"),
    ("credits", 104, 0, None, "Credits"),
    ("controlsSingle", 120, 0, None, "Single player controls"),
    ("controlsMulti1", 121, 0, None, "Controls of player 1"),
    ("controlsMulti2", 121, 1, None, "Controls of player 2"),
    ("rebindLeft", 122, -1, "x", "Left"),
    ("rebindRight", 122, 1, "x", "Right"),
    ("rebindUp", 122, -1, "y", "Up"),
    ("rebindDown", 122, 1, "y", "Down"),
    ("rebindFire", 122, 1, "fire", "Fire"),
    ("rebindShield", 122, 1, "shield", "Shield"),
    ("rebindTimeWarp", 122, 1, "timewarp", "Time warp"),
    ("rebindPause", 122, 1, "pause", "Pause"),
    ("keyCaught", 123, 0, None, "Key caught"),
    ("joyButtonCaught", 124, 0, None, "Gamepad button caught"),
    ("joyAxisCaught", 125, 0, None, "Gamepad axis caught"),
    ("soundSettings", 126, 0, None, "Sound settings"),
    ("volumeSounds", 127, 0, None, "Effects volume"),
    ("volumeMusic", 128, 0, None, "Music volume"),
    ("quitGame", 201, 0, None, "Quit the game"),
]
EVALUATOR = "evaluatorGui"

# Font styles: (name, family, size, justification, colour).
FONT_STYLES = [
    ("fTitle", "Title", 30, "center", "9FD4FFFF"),
    ("fButton", "Standard", 24, "center", "C6D6F5FF"),
    ("fButtonHot", "Standard", 24, "center", "FFFFFFFF"),
    ("fCheck", "Standard", 24, "left", "C6D6F5FF"),
    ("fCheckHot", "Standard", 24, "left", "FFFFFFFF"),
    ("fText", "Text", 20, "left", "C6D6F5FF"),
    ("fTextRight", "Text", 20, "right", "C6D6F5FF"),
    ("fTextCenter", "Text", 20, "center", "C6D6F5FF"),
    ("fHeading", "Text", 20, "left", "9FD4FFFF"),
    ("fHeadingCenter", "Text", 20, "center", "9FD4FFFF"),
    ("fHint", "Text", 16, "center", "8FA6CCFF"),
    ("fValue", "Text", 16, "center", "FFFFFFFF"),
    ("fKeyName", "Title", 30, "center", "FFE27AFF"),
    ("fNameRed", "Standard", 24, "left", "FF6A5CFF"),
    ("fNameBlue", "Standard", 24, "left", "6FA0FFFF"),
]
# Label styles: (name, rect style or None, font style or None).
LABEL_STYLES = [
    ("lsTitle", None, "fTitle"),
    ("lsText", None, "fText"),
    ("lsTextRight", None, "fTextRight"),
    ("lsTextCenter", None, "fTextCenter"),
    ("lsHeading", None, "fHeading"),
    ("lsHeadingCenter", None, "fHeadingCenter"),
    ("lsHint", None, "fHint"),
    ("lsKeyName", None, "fKeyName"),
    ("lsValue", "rField", "fValue"),
    ("lsFixed", "rField", "fHint"),
    ("lsButton", "rButton", "fButton"),
    ("lsButtonHot", "rButtonHot", "fButtonHot"),
    ("lsButtonDown", "rButtonDown", "fButtonHot"),
    ("lsCheckOff", "rCheckOff", "fCheck"),
    ("lsCheckOffHot", "rCheckOffHot", "fCheckHot"),
    ("lsCheckOn", "rCheckOn", "fCheck"),
    ("lsCheckOnHot", "rCheckOnHot", "fCheckHot"),
    ("lsKnob", "rKnob", None),
    ("lsKnobHot", "rKnobHot", None),
    ("lsTextfieldRed", "rField", "fNameRed"),
    ("lsTextfieldBlue", "rField", "fNameBlue"),
]

_fonts = {}  # (family, size) -> font, read by load_fonts


def load_fonts(fonts_dir):
    for d in sorted(os.listdir(fonts_dir)):
        f = datadef.read_font(os.path.join(fonts_dir, d))
        _fonts[(f["family"], f["size"])] = f


def text_width(family, size, text):
    font = _fonts[(family, size)]
    return sum(font["chars"][ord(c)]["width"] + font["spacing"] for c in text)


FONT_OF_LABEL = {ls: next(f for f in FONT_STYLES if f[0] == font) for ls, _, font in LABEL_STYLES if font}
FONT_OF_LABEL.update({"bsButton": FONT_OF_LABEL["lsButton"], "csCheck": FONT_OF_LABEL["lsCheckOn"]})


def _attrs(pairs):
    return "".join(" %s=%s" % (k, quoteattr(str(v))) for k, v in pairs if v is not None)


class Panel:
    """A framed pane filled from the top; `top` is the next free row's distance from the top."""

    def __init__(self, name, width, area_height):
        self.name, self.width, self.area_height = name, width, area_height
        self.inner = width - 2 * PAD
        self.items = []
        self.top = PAD

    def add(self, tag, name, x, width, height, **attrs):
        caption, style = attrs.get("caption"), attrs.get("style")
        if caption and style in FONT_OF_LABEL:
            _, family, size, _, _ = FONT_OF_LABEL[style]
            assert text_width(family, size, caption) <= width - 12, (name, caption)
        self.items.append((tag, name, x, self.top, width, height, attrs))

    def row(self, height, gap=ROW_GAP):
        self.top += height + gap

    def buttons(self, grid_y, entries, height=BUTTON_H, gap=ROW_GAP):
        """One row of equal buttons across the panel: (name, caption, trigger) each."""
        spacing = 24
        width = (self.inner - spacing * (len(entries) - 1)) // len(entries)
        for i, (name, caption, action) in enumerate(entries):
            self.add("Button", name, PAD + i * (width + spacing), width, height, caption=caption, style="bsButton",
                     trigger=trigger(action), gridX=i, gridY=grid_y)
        self.row(height, gap)

    def title(self, name, caption):
        self.add("Label", name, 0, self.width, 40, caption=caption, style="lsTitle")
        self.row(40, 16)

    def heading(self, name, caption):
        self.add("Label", name, PAD, self.inner, 24, caption=caption, style="lsHeading")
        self.row(24, TEXT_GAP + 4)

    def xml(self):
        self.height = self.top - ROW_GAP + PAD
        assert self.height + 2 * FRAME <= self.area_height, (self.name, self.height)
        lines = ["<Pane%s>" % _attrs([("name", self.name), ("x", 0), ("y", 0), ("width", self.width),
                                      ("height", self.height), ("visible", "false"), ("style", "rPanel")])]
        for tag, name, x, top, width, h, attrs in self.items:
            pairs = [("name", name), ("x", x), ("y", self.height - top - h), ("width", width), ("height", h)]
            lines.append("  <%s%s/>" % (tag, _attrs(pairs + sorted(attrs.items()))))
        lines.append("</Pane>")
        return lines


def trigger(name):
    return "%s.%s" % (EVALUATOR, name)


def checkbox_and_button(p, grid_y, checkbox, button):
    """A checkbox in the left half of a row and a button in the right half."""
    half = (p.inner - 24) // 2
    p.add("Checkbox", checkbox, PAD + 22, half - 22, CHECK_H, caption=" Full screen", style="csCheck",
          trigger=trigger("fullscreen"), gridX=0, gridY=grid_y)
    # The checkbox sits in the middle of the button's height.
    p.items[-1] = p.items[-1][:3] + (p.top + (BUTTON_H - CHECK_H) // 2,) + p.items[-1][4:]
    p.add("Button", button, p.width - PAD - half, half, BUTTON_H, caption="Sound", style="bsButton",
          trigger=trigger("soundSettings"), gridX=1, gridY=grid_y, gridWidth=2)
    p.row(BUTTON_H)


def main_menu():
    p = Panel("pMainMenu", 400, MENU_AREA_H)
    rows = [("btnSinglePlayerA", "Single Player Mode A", "startSingleA"),
            ("btnSinglePlayerB", "Single Player Mode B", "startSingleB"),
            ("btnMultiplayer", "Multiplayer", "startMulti"),
            ("btnSettings", "Settings", "settings"),
            ("btnCredits", "Credits", "credits"),
            ("btnMainQuit", "Quit", "back")]
    for i, entry in enumerate(rows):
        p.buttons(i, [entry])
    return p


def settings():
    p = Panel("pSettings", 680, MENU_AREA_H)
    p.title("lSettingsTitle", "Settings")
    checkbox_and_button(p, 0, "cbFullscreen", "btnSoundSettings")
    p.heading("lSettingsControls", "Controls")
    p.buttons(1, [("btnControlsSinglePlayer", "Single Player", "controlsSingle"),
                  ("btnControlsMultiplayer1", "Player 1", "controlsMulti1"),
                  ("btnControlsMultiplayer2", "Player 2", "controlsMulti2")])
    p.add("Button", "btnSettingsDone", (p.width - 200) // 2, 200, BUTTON_H, caption="Done", style="bsButton",
          trigger=trigger("back"), gridX=0, gridY=2, gridWidth=3)
    p.row(BUTTON_H)
    return p


CREDITS = [
    ("A space shooter for Linux", "lsTextCenter", 4),
    ("Game, framework, art, sound and music", "lsTextCenter", 0),
    ("by the Vantorix team", "lsTextCenter", 12),
    ("Images, sounds and music made by its own generators", "lsHint", 0),
    ("Fonts rendered from DejaVu (Bitstream Vera licence)", "lsHint", 0),
    ("Built on SDL, OpenGL, OpenAL, Ogg Vorbis, expat and libpng", "lsHint", 12),
]


def credits():
    p = Panel("pCredits", 600, MENU_AREA_H)
    p.title("lCreditsTitle", "Credits")
    for i, (text, style, gap) in enumerate(CREDITS):
        p.add("Label", "lCredits%d" % i, PAD, p.inner, 24, caption=text, style=style)
        p.row(24, gap)
    seam = 190  # "Version" ends here and the version text begins, so the pair sits near the middle
    p.add("Label", "lHeaderVersionCaption", PAD, seam - 10 - PAD, 24, caption="Version", style="lsTextRight")
    p.add("Label", "lHeaderVersion", seam, p.width - PAD - seam, 24, caption="", style="lsText")
    p.row(24, ROW_GAP - 4)
    p.add("Button", "btnCreditsBack", (p.width - 200) // 2, 200, BUTTON_H, caption="Back", style="bsButton",
          trigger=trigger("back"), gridX=0, gridY=0)
    p.row(BUTTON_H)
    return p


def quit_question():
    p = Panel("pQuit", 400, MENU_AREA_H)
    p.title("lQuitQuestion", "Quit Vantorix?")
    p.buttons(0, [("btnQuit", "Yes", "confirm"), ("btnQuitNo", "No", "back")])
    return p


def sound_settings():
    p = Panel("pSoundSettings", 520, MENU_AREA_H)
    p.title("lSoundTitle", "Sound")
    for i, (caption, slider, value, action) in enumerate(
            [("Effects", "sVolumeSounds", "lVolumeSoundsValue", "volumeSounds"),
             ("Music", "sVolumeMusic", "lVolumeMusicValue", "volumeMusic")]):
        p.add("Label", "lVolume%sCaption" % caption, PAD, 100, 28, caption=caption, style="lsText")
        p.add("Slider_int", slider, PAD + 110, p.inner - 110 - 90, 20, barStyle="rTrack", handleStyle="bsKnob",
              orientation="horizontal", size="-20", min=0, max=100, stepSmall=5, stepLarge=20, value=100,
              trigger=trigger(action), gridX=0, gridY=i, gridWidth=2)
        p.items[-1] = p.items[-1][:3] + (p.top + 4,) + p.items[-1][4:]
        p.add("Label", value, p.width - PAD - 64, 64, 28, caption="100", style="lsValue")
        p.row(28)
    p.buttons(2, [("btnSoundSettingsOk", "OK", "confirm"), ("btnSoundSettingsCancel", "Cancel", "back")])
    return p


CONTROLS = [("Left", "Left"), ("Right", "Right"), ("Up", "Up"), ("Down", "Down"), ("Fire", "Fire"),
            ("Shield", "Shield"), ("TimeWarp", "Time Warp"), ("Pause", "Pause")]
CONTROL_H = 24


def controls():
    p = Panel("pControls", 740, 600)
    p.add("Label", "labelControlsHeader", 0, p.width, 40, caption="Controls", style="lsTitle")
    p.row(40, 12)
    # The three sets of controls, one click apart; the title says which one is shown.
    tab_w, tab_gap = 196, 24
    x = (p.width - 3 * tab_w - 2 * tab_gap) // 2
    for i, (name, caption, action) in enumerate([("btnControlsSingle", "Single Player", "controlsSingle"),
                                                  ("btnControlsPlayer1", "Player 1", "controlsMulti1"),
                                                  ("btnControlsPlayer2", "Player 2", "controlsMulti2")]):
        p.add("Button", name, x + i * (tab_w + tab_gap), tab_w, CONTROL_H, caption=caption, style="bsButton",
              trigger=trigger(action), gridX=i, gridY=0)
    p.row(CONTROL_H, 16)
    button_w, col_gap = 160, 24
    col_key = PAD + button_w + col_gap
    col_joy = col_key + 210 + col_gap
    w_key, w_joy = col_joy - col_gap - col_key, p.width - PAD - col_joy
    p.add("Label", "lControlsKeyboard", col_key, w_key, 24, caption="Keyboard", style="lsHeadingCenter")
    p.add("Label", "lControlsGamepad", col_joy, w_joy, 24, caption="Gamepad", style="lsHeadingCenter")
    p.row(24, 14)
    for i, (name, caption) in enumerate(CONTROLS):
        p.add("Button", "btnControls" + name, PAD, button_w, CONTROL_H, caption=caption, style="bsButton",
              trigger=trigger("rebind" + name), gridX=0, gridY=i + 1, gridWidth=3)
        if name == "Pause":  # the keys that pause are fixed; a gamepad button can be chosen
            p.add("Label", "lControlsPauseKeys", col_key, w_key, CONTROL_H, caption="Escape, P, Pause", style="lsFixed")
        else:
            p.add("Label", "labelControls" + name, col_key, w_key, CONTROL_H, caption="", style="lsValue")
        p.add("Label", "labelControls%sJoy" % name, col_joy, w_joy, CONTROL_H, caption="", style="lsValue")
        p.row(CONTROL_H, 16)
    p.top -= 6
    p.add("Label", "lControlsHint", 0, p.width, 22,
          caption="Choose a control, then press its new key or gamepad input", style="lsHint")
    p.row(22, 18)
    w = 160
    p.add("Button", "btnControlsOk", p.width - PAD - 2 * w - 24, w, BUTTON_H, caption="OK", style="bsButton",
          trigger=trigger("confirm"), gridX=0, gridY=len(CONTROLS) + 1)
    p.add("Button", "btnControlsCancel", p.width - PAD - w, w, BUTTON_H, caption="Cancel", style="bsButton",
          trigger=trigger("back"), gridX=1, gridY=len(CONTROLS) + 1, gridWidth=2)
    p.row(BUTTON_H)
    return p


def get_key():
    p = Panel("pGetKey", 540, 600)
    p.add("Label", "lGetKeyHeader", 0, p.width, 28, caption="Press a key or a gamepad input for",
          style="lsTextCenter")
    p.add("Label", "lGetKeyHeaderAlternate", 0, p.width, 28, caption="Press a gamepad button for",
          style="lsTextCenter", visible="false")
    p.row(28, 6)
    p.add("Label", "lGetKeyTriggerName", 0, p.width, 44, caption="", style="lsKeyName")
    p.row(44, 12)
    p.add("Label", "lGetKeyHint", 0, p.width, 22, caption="Escape keeps the old binding, Backspace clears it",
          style="lsHint")
    p.row(22, ROW_GAP)
    p.add("InputCaptor", "icGetKey", 0, 0, 0, enabled="false", triggerKey=trigger("keyCaught"),
          triggerJoyButton=trigger("joyButtonCaught"), triggerJoyAxis=trigger("joyAxisCaught"))
    return p


def enter_name():
    p = Panel("pEnterName", 520, 600)
    p.add("Label", "lEnterName", 0, p.width, 30, caption="Enter your name, player 1:", style="lsTextCenter")
    p.row(30, 18)
    p.add("Textfield", "tfEnterName", PAD + 20, p.inner - 40, 36, caption="", style="lsTextfieldRed",
          triggerConfirm=trigger("confirm"))
    p.row(36, 18)
    p.add("Label", "lEnterNameHint", 0, p.width, 22, caption="Press Return when done", style="lsHint")
    p.row(22, ROW_GAP)
    return p


def in_game():
    p = Panel("pInGame", 680, 600)
    p.title("lInGameTitle", "Paused")
    p.add("Button", "btnContinue", PAD, p.inner, BUTTON_H, caption="Continue", style="bsButton",
          trigger=trigger("back"), gridX=0, gridY=0, gridWidth=3)
    p.row(BUTTON_H)
    checkbox_and_button(p, 1, "cbInGameFullscreen", "btnInGameSoundSettings")
    p.heading("lInGameControls", "Controls")
    p.buttons(2, [("btnInGameControlsSinglePlayer", "Single Player", "controlsSingle"),
                  ("btnInGameControlsMultiplayer1", "Player 1", "controlsMulti1"),
                  ("btnInGameControlsMultiplayer2", "Player 2", "controlsMulti2")])
    p.add("Button", "btnInGameQuit", PAD, p.inner, BUTTON_H, caption="Quit Game", style="bsButton",
          trigger=trigger("quitGame"), gridX=0, gridY=3, gridWidth=3)
    p.row(BUTTON_H)
    return p


def _frame(name, prefix, **extra):
    parts = ["upperLeft", "upper", "upperRight", "left", "center", "right", "lowerLeft", "lower", "lowerRight"]
    pairs = [("name", name), ("color", "FFFFFFFF"), ("stretch", "stretch")]
    pairs += [(p, prefix + p[0].upper() + p[1:]) for p in parts]
    return "<TexturedRectStyle%s/>" % _attrs(pairs + list(extra.items()))


def styles():
    out = [_frame("rPanel", "panel"), _frame("rButton", "button"), _frame("rButtonHot", "buttonHot"),
           _frame("rButtonDown", "buttonDown"), _frame("rField", "field")]
    # A checkbox is its caption with the box drawn just left of it, outside the widget.
    for name, image in [("rCheckOff", "checkOff"), ("rCheckOffHot", "checkOffHot"), ("rCheckOn", "checkOn"),
                        ("rCheckOnHot", "checkOnHot")]:
        out.append("<TexturedRectStyle%s/>" % _attrs([("name", name), ("color", "FFFFFFFF"),
                                                      ("stretchLeft", "single"), ("left", image)]))
    # A groove for the sliders' knobs, lit from below like the fields.
    out.append('<PlainRectStyle name="rTrack" color="0A1226FF" border="2" colorBorder1="03060CFF" '
               'colorBorder2="4F72A8FF"/>')
    for name, image in [("rKnob", "knob"), ("rKnobHot", "knobHot")]:
        out.append("<TexturedRectStyle%s/>" % _attrs([("name", name), ("color", "FFFFFFFF"),
                                                      ("stretchCenter", "stretch"), ("center", image)]))
    for name, family, size, horizontal, color in FONT_STYLES:
        out.append("<SimpleFontStyle%s/>" % _attrs([("name", name), ("family", family), ("size", size),
                                                    ("horizontal", horizontal), ("vertical", "center"),
                                                    ("color", color)]))
    for name, rect, font in LABEL_STYLES:
        out.append("<LabelStyle%s/>" % _attrs([("name", name), ("rect", rect), ("font", font)]))
    out.append('<ButtonStyle name="bsButton" up="lsButton" upHot="lsButtonHot" down="lsButtonDown" '
               'downHot="lsButtonDown"/>')
    out.append('<ButtonStyle name="bsKnob" up="lsKnob" upHot="lsKnobHot" down="lsKnobHot" downHot="lsKnobHot"/>')
    out.append('<ButtonStyle name="bsCheckOff" up="lsCheckOff" upHot="lsCheckOffHot" down="lsCheckOffHot" '
               'downHot="lsCheckOffHot"/>')
    out.append('<ButtonStyle name="bsCheckOn" up="lsCheckOn" upHot="lsCheckOnHot" down="lsCheckOnHot" '
               'downHot="lsCheckOnHot"/>')
    out.append('<CheckboxStyle name="csCheck" checked="bsCheckOn" unchecked="bsCheckOff"/>')
    return out


# The first panel is drawn on top.
PANELS = [get_key, quit_question, main_menu, settings, credits, sound_settings, controls, enter_name, in_game]


def banks():
    """The GUI's trigger bank and the GUI bank, as lines of resources.xml."""
    lines = ['<inputEvaluator name="%s">' % EVALUATOR,
             "  <!-- fired by the GUI's widgets only; no key reaches them -->"]
    for name, code, data, data_string, description in TRIGGERS:
        lines.append("  <trigger%s/>" % _attrs([("code", code), ("name", name), ("description", description),
                                                ("data", data or None), ("dataString", data_string)]))
    lines.append("</inputEvaluator>")
    lines.append('<gui name="gui" fonts="fonts" images="imagesGui" cursor="cursor" width="800" height="600">')
    lines += ["  " + s for s in styles()]
    for make in PANELS:
        lines += ["  " + s for s in make().xml()]
    lines.append("</gui>")
    return lines


class Bank:
    """Both banks as one element list for resources.xml; captions are measured with the fonts in
    `fonts_dir`."""

    def __init__(self, fonts_dir):
        load_fonts(fonts_dir)

    def xml(self):
        return "\n".join("  " + line for line in banks())


if __name__ == "__main__":
    load_fonts(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "data", "fonts"))
    print("\n".join(banks()))

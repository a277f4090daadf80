"""The game's music: five intro-and-loop pairs and the death jingle.

A piece is an intro section and a loop section of whole bars. It is rendered as one stream
(intro, loop, loop), so that every note and the reverb ring on naturally across the joins:

- the loop file is the second pass of the loop. It starts with the tails of the first pass,
  which are exactly the tails its own end leaves behind, so it joins its start seamlessly;
- the intro file is the intro, whose last few milliseconds cross over into the end of the
  first loop pass. Its final sample then leads straight into the loop file's first.

Intros end on the same bar as the loop (chord and drum fill), so the crossover is inaudible.
"""
import math
import os

import numpy as np

import audio
import synth
from synth import Mix

TARGET_DB = -17.0   # gated RMS every piece is levelled to
CEILING = 0.88      # soft limit for peaks, headroom for the encoder
QUALITY = 3
CROSSOVER = 0.03    # seconds

NAMES = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}


def note(text):
    """'C#5' -> 73 (C4 = 60)."""
    pc = NAMES[text[0]]
    rest = text[1:]
    while rest and rest[0] in "#b":
        pc += 1 if rest[0] == "#" else -1
        rest = rest[1:]
    return pc + 12 * (int(rest) + 1)


def melody(text, bars):
    """'D5:1.5 E5:.5 ... | ...' -> [(beat, length, midi)]; every bar must hold four beats."""
    events, beat = [], 0.0
    parts = [p.split() for p in text.split("|")]
    assert len(parts) == bars, "%d bars instead of %d: %s" % (len(parts), bars, text[:40])
    for i, part in enumerate(parts):
        start = beat
        for token in part:
            name, length = token.split(":")
            if name != "r":
                events.append((beat, float(length), note(name)))
            beat += float(length)
        assert abs(beat - start - 4) < 1e-9, "bar %d holds %g beats: %s" % (i + 1, beat - start, part)
    return events


QUALITIES = {"": (0, 4, 7), "m": (0, 3, 7), "sus4": (0, 5, 7), "7": (0, 4, 7, 10)}


def chord(symbol):
    """Pitch classes of a chord symbol such as 'Bb', 'F#m', 'Asus4'."""
    root = NAMES[symbol[0]]
    rest = symbol[1:]
    if rest[:1] in ("#", "b"):
        root += 1 if rest[0] == "#" else -1
        rest = rest[1:]
    return [(root + i) % 12 for i in QUALITIES[rest]]


def voicing(symbol, low):
    """Chord tones placed in the octave from `low` upwards, lowest first."""
    return sorted(low + (pc - low) % 12 for pc in chord(symbol))


def bass_note(symbol, low=33):
    return low + (chord(symbol)[0] - low) % 12


# ---------------------------------------------------------------- patterns

def steps(pattern):
    """'x.o.' -> [(step, velocity)]: x loud, o soft."""
    return [(i, 1.0 if c == "x" else 0.6) for i, c in enumerate(pattern) if c in "xo"]


DRUMS = {
    "-": {},
    "k": {"kick": "x...x...x...x..."},
    "h": {"kick": "x...x...x...x...", "hat": "..x...x...x...x."},
    "m": {"kick": "x...x...x...x...", "snare": "....x.......x...", "hat": "xoxoxoxoxoxoxoxo",
          "openhat": "..............x."},
    "f": {"kick": "x...x...x...x...", "snare": "....x.......x.xx", "hat": "xoxoxoxoxoxo...."},
    "F": {"kick": "x...x...x...x...", "snare": "....x...x.x.xxxx", "tom": "........x.x.x.x.",
          "hat": "xoxoxoxo........"},
    # Driving double-time kicks for the faster game.
    "d": {"kick": "x..x..x.x..x..x.", "snare": "....x.......x...", "hat": "xxxxxxxxxxxxxxxx"},
    "D": {"kick": "x..x..x.x..x..x.", "snare": "....x...xxxxxxxx", "tom": "........x.x.x.x.",
          "hat": "xxxxxxxx........"},
    # Laid-back groove for the slow pieces.
    "g": {"kick": "x.......x.x.....", "snare": "....x.......x...", "hat": "x.x.x.x.x.x.x.x."},
    "G": {"kick": "x.......x.x.....", "snare": "....x.......x.xx", "tom": "..........x.x...",
          "hat": "x.x.x.x.x......."},
    "s": {"kick": "x.........x.....", "rim": "....x.......x...", "hat": "o.o.o.o.o.o.o.o."},
    "S": {"kick": "x.........x.....", "rim": "....x.......x.o.", "hat": "o.o.o.o.o.o....."},
}

# (step, length in steps, interval above the root)
BASS = {
    "-": [],
    "r": [(0, 16, 0)],
    "a": [(s, 2, 12 if s % 4 == 2 else 0) for s in range(0, 16, 2)],
    "d": [(s, 1, 0) for s in range(16)],
    "s": [(0, 3, 0), (3, 3, 0), (6, 2, 12), (8, 3, 0), (11, 3, 7), (14, 2, 12)],
    "h": [(0, 6, 0), (6, 2, 0), (8, 6, 7), (14, 2, 12)],
}

# Indexes into the chord tones (then the same an octave up), one per sixteenth or eighth.
ARP = {
    "-": None,
    "a": (1, [0, 1, 2, 3, 4, 3, 2, 1, 0, 1, 2, 3, 4, 3, 2, 1]),
    "b": (1, [0, 2, 4, 2, 1, 3, 5, 3, 0, 2, 4, 2, 1, 3, 4, 3]),
    "e": (2, [0, 2, 1, 3, 2, 4, 3, 1]),
}


class Section:
    """Bars of chords, a plan naming each layer's pattern bar by bar, a melody for the lead
    instrument and an optional second line on bells."""

    def __init__(self, chords, plan, melody_text=None, lead="lead", lead_gain=1.0, bells=None):
        self.chords = chords.split()
        self.bars = len(self.chords)
        self.plan = {k: v.replace(" ", "") for k, v in plan.items()}
        for layer, chars in self.plan.items():
            assert len(chars) == self.bars, "%s plans %d bars of %d" % (layer, len(chars), self.bars)
        self.melody = melody(melody_text, self.bars) if melody_text else []
        self.bells = melody(bells, self.bars) if bells else []
        self.lead = lead
        self.lead_gain = lead_gain


class Piece:
    def __init__(self, name, bpm, intro, loop, mix, room=1.6, tail=0.0):
        self.name, self.bpm, self.intro, self.loop = name, bpm, intro, loop
        self.levels = mix
        self.room = room
        self.tail = tail

    def play(self, m, offset, section):
        lv = self.levels
        sixteenth = 0.25
        for bar, symbol in enumerate(section.chords):
            b0 = bar * 4.0

            def pos(step):
                return m.at(offset, b0 + step * sixteenth)

            def layer(name):
                return section.plan.get(name, "-" * section.bars)[bar]

            if layer("pad") != "-":
                m.add(pos(0), synth.pad(tuple(voicing(symbol, 55)), m.beats(4), 0.8),
                      lv["pad"], send=0.35)
            for step, length, interval in BASS[layer("bass")]:
                m.add(pos(step), synth.bass(bass_note(symbol) + interval,
                                            m.beats(length * sixteenth * 0.9), 0.9),
                      lv["bass"], send=0.05)
            arp = ARP[layer("arp")]
            if arp:
                unit, order = arp
                tones = voicing(symbol, 62)
                tones = tones[:3] + [t + 12 for t in tones[:3]]
                for i, idx in enumerate(order):
                    m.add(pos(i * unit), synth.pluck(tones[idx], m.beats(unit * sixteenth), 0.8),
                          lv["arp"], pan=0.35 if i % 2 else -0.35, send=0.3)
            if layer("piano") != "-":
                for i, idx in enumerate(ARP["e"][1]):
                    tones = voicing(symbol, 60)
                    tones = tones[:3] + [t + 12 for t in tones[:3]]
                    m.add(pos(i * 2), synth.piano(tones[idx], m.beats(0.5), 0.7),
                          lv.get("piano", 0.3), pan=-0.2 + 0.4 * (i % 2), send=0.4)
            drums = DRUMS[layer("drums")]
            if layer("crash") == "x":
                m.add(pos(0), synth.drum("crash"), lv["crash"], pan=0.3, send=0.25)
            for name, pattern in drums.items():
                for step, vel in steps(pattern):
                    pan = {"hat": -0.3, "openhat": -0.3, "tom": 0.2}.get(name, 0.0)
                    m.add(pos(step), synth.drum(name), lv[name] * vel, pan=pan,
                          send=0.12 if name != "kick" else 0.02)
        instrument = getattr(synth, section.lead)
        for beat, length, midi in section.melody:
            sig = instrument(midi, m.beats(length * 0.92), 0.85)
            m.add(m.at(offset, beat), sig, lv["lead"] * section.lead_gain, send=0.3)
            if section.lead == "lead":
                # A quieter echo an eighth later widens the line.
                m.add(m.at(offset, beat + 0.75), sig, lv["lead"] * section.lead_gain * 0.25,
                      pan=0.5, send=0.4)
        for beat, length, midi in section.bells:
            m.add(m.at(offset, beat), synth.bell(midi, m.beats(length), 0.8), lv["bell"], pan=0.25,
                  send=0.45)

    def render(self):
        """The stream intro + loop + loop (or just the intro for a one-shot piece), and the
        intro and loop lengths in samples."""
        spb = audio.RATE * 60.0 / self.bpm
        intro_n = int(round(self.intro.bars * 4 * spb))
        loop_n = int(round(self.loop.bars * 4 * spb)) if self.loop else 0
        # Half a second spare, so that no file ends on the last sample of the mix, where the
        # hall is cut off.
        length = intro_n + 2 * loop_n + int(self.tail * audio.RATE) + audio.RATE // 2
        m = Mix(self.bpm, length)
        self.play(m, 0, self.intro)
        if self.loop:
            self.play(m, intro_n, self.loop)
            self.play(m, intro_n + loop_n, self.loop)
        return m.render(self.room), intro_n, loop_n


def limit(x):
    """Soft knee above 0.7 that never passes CEILING; sample by sample, so loops stay whole."""
    knee = 0.7
    mag = np.abs(x)
    over = mag > knee
    out = x.copy()
    out[over] = np.sign(x[over]) * (knee + (CEILING - knee) * np.tanh((mag[over] - knee) / (CEILING - knee)))
    return out


def export(piece, out_dir):
    """Writes the piece's files; returns their names."""
    stream, intro_n, loop_n = piece.render()
    if not piece.loop:
        stream = stream[:intro_n + int(piece.tail * audio.RATE)]
        fade = int(piece.tail * audio.RATE)
        stream[-fade:] *= np.linspace(1, 0, fade)[:, None] ** 2
        gain = 10 ** ((TARGET_DB - audio.loudness(stream)) / 20)
        name = "music_%s.ogg" % piece.name
        audio.encode_ogg(os.path.join(out_dir, name), limit(stream * gain), QUALITY)
        return [name]
    loop = stream[intro_n + loop_n:intro_n + 2 * loop_n]
    intro = stream[:intro_n].copy()
    n = int(CROSSOVER * audio.RATE)
    w = (0.5 - 0.5 * np.cos(np.linspace(0, math.pi, n)))[:, None]
    intro[-n:] = intro[-n:] * (1 - w) + stream[intro_n + loop_n - n:intro_n + loop_n] * w
    gain = 10 ** ((TARGET_DB - audio.loudness(loop)) / 20)
    names = ["music_%s_intro.ogg" % piece.name, "music_%s_loop.ogg" % piece.name]
    audio.encode_ogg(os.path.join(out_dir, names[0]), limit(intro * gain), QUALITY)
    audio.encode_ogg(os.path.join(out_dir, names[1]), limit(loop * gain), QUALITY)
    return names


# ---------------------------------------------------------------- the pieces

BAND = {"pad": 0.26, "bass": 0.26, "arp": 0.2, "lead": 0.5, "kick": 0.7, "snare": 0.45,
        "hat": 0.15, "openhat": 0.13, "tom": 0.45, "crash": 0.28, "rim": 0.35, "piano": 0.3,
        "bell": 0.3}


def bars(text, first, last):
    """Bars first..last-1 of a chord list or a melody."""
    if "|" in text:
        return "|".join(text.split("|")[first:last])
    return " ".join(text.split()[first:last])


# Each intro builds up for a few bars and then states the first half of the theme more
# lightly, ending on the loop's last bar (chord and fill), so that it hands over to the loop.

TITLE_CHORDS = "Dm Bb F C Dm Bb Gm A Dm Bb F C Gm Bb A A"
TITLE_THEME = (
    "D5:1.5 E5:.5 F5:1 A5:1 | G5:1.5 F5:.5 D5:2 | C5:1 F5:1 A5:1 C6:1 | Bb5:1.5 A5:.5 G5:2 |"
    "A5:1.5 G5:.5 F5:1 E5:.5 F5:.5 | D5:3 r:1 | Bb4:1 D5:1 G5:1 Bb5:1 | A5:2 G5:.5 F5:.5 E5:1 |"
    "D6:1.5 C6:.5 A5:1 F5:1 | G5:1 A5:1 Bb5:1 D6:1 | C6:1.5 A5:.5 F5:1 A5:1 | G5:3 r:1 |"
    "Bb5:1.5 A5:.5 G5:1 D5:1 | F5:1 G5:1 A5:1 Bb5:1 | A5:2 C#6:1 E6:1 | A5:2 r:2")


def title():
    intro = Section("Dm Bb Gm A " + bars(TITLE_CHORDS, 0, 8), {
        "pad": "pppp pppppppp", "arp": "-aaa aaaaaaaa", "bass": "--as aaaaaaas",
        "drums": "-khF hhhhhhhF", "crash": "--x- x-------"},
        "r:4 | r:4 | r:4 | r:4 |" + bars(TITLE_THEME, 0, 7) + "| A5:2 r:2", lead_gain=0.85,
        bells="A5:1 D6:1 F6:1 E6:1 | D6:3 r:1 | Bb5:1 D6:1 G6:1 F6:1 | E6:2 C#6:2 |"
              + "|".join(["r:4"] * 8))
    loop = Section(TITLE_CHORDS, {
        "pad": "p" * 16, "arp": "a" * 16, "bass": "aaaaaaaa aaaaaaas",
        "drums": "mmmmmmmf mmmmmmmF", "crash": "x------- x-------"}, TITLE_THEME)
    return Piece("title", 112, intro, loop, BAND)


GAME_A_CHORDS = "Am F C G Am F C E Am F C G F G E E"
GAME_A_THEME = (
    "A4:.5 C5:.5 E5:.5 A5:1 G5:.5 E5:1 | F5:1.5 E5:.5 C5:1 A4:1 |"
    "G4:.5 C5:.5 E5:.5 G5:1 E5:.5 C5:1 | D5:1.5 B4:.5 G4:2 |"
    "A4:.5 C5:.5 E5:.5 A5:1 B5:.5 C6:1 | A5:1.5 G5:.5 F5:1 E5:1 |"
    "E5:.5 G5:.5 C6:1 B5:.5 G5:.5 E5:1 | G#5:2 B5:1 G#5:1 |"
    "A5:1 E5:.5 A5:.5 C6:1 B5:1 | A5:1 F5:.5 A5:.5 C6:1 A5:1 |"
    "G5:1 E5:.5 G5:.5 C6:1 D6:1 | B5:2 G5:1 D5:1 |"
    "C6:1.5 A5:.5 F5:1 A5:1 | D6:1.5 B5:.5 G5:1 B5:1 | E6:1.5 D6:.5 B5:1 G#5:1 | E5:2 r:2")


def game_a():
    intro = Section("Am Am F G " + bars(GAME_A_CHORDS, 0, 8), {
        "pad": "pppp pppppppp", "arp": "--aa aaaaaaaa", "bass": "aaaa aaaaaaaa",
        "drums": "khmF hhhhhhhF", "crash": "x--- x-------"},
        "r:4 | r:4 | r:4 | r:4 |" + bars(GAME_A_THEME, 0, 7) + "| E5:2 r:2", lead_gain=0.85)
    loop = Section(GAME_A_CHORDS, {
        "pad": "p" * 16, "arp": "a" * 16, "bass": "a" * 16,
        "drums": "mmmmmmmf mmmmmmmF", "crash": "x------- x-------"}, GAME_A_THEME)
    return Piece("game_a", 135, intro, loop, BAND)


GAME_B_CHORDS = "Em C D B Em C Am B Em C D B C D B B"
GAME_B_THEME = (
    "E5:.75 F#5:.25 G5:.5 B5:.5 E6:1 D6:.5 B5:.5 | C6:1 B5:.5 G5:.5 E5:1 G5:1 |"
    "F#5:.75 G5:.25 A5:.5 D6:.5 F#6:1 E6:.5 D6:.5 | D#6:2 B5:1 F#5:1 |"
    "G5:.5 A5:.5 B5:1 E6:1 B5:1 | C6:.5 B5:.5 A5:.5 G5:.5 E5:2 |"
    "A5:.5 B5:.5 C6:1 E6:1 C6:1 | B5:2 A5:.5 G5:.5 F#5:1 |"
    "E6:1.5 D6:.5 B5:1 G5:1 | E6:1 G6:1 E6:.5 D6:.5 C6:1 |"
    "D6:1.5 C6:.5 A5:1 F#5:1 | F#6:2 D#6:1 B5:1 |"
    "G5:.5 C6:.5 E6:1 G6:1 E6:1 | F#5:.5 A5:.5 D6:1 F#6:1 D6:1 | D#6:1 F#6:1 B6:2 | B5:2 r:2")


def game_b():
    intro = Section("Em Em C B " + bars(GAME_B_CHORDS, 0, 8) + " B", {
        "pad": "pppp pppppppp p", "arp": "-bbb bbbbbbbb b", "bass": "dddd dddddddd d",
        "drums": "hddD hhhhhhhh D", "crash": "x--- x------- -"},
        "r:4 | r:4 | r:4 | r:4 |" + bars(GAME_B_THEME, 0, 8) + "| B5:2 r:2", lead_gain=0.8)
    loop = Section(GAME_B_CHORDS, {
        "pad": "p" * 16, "arp": "b" * 16, "bass": "d" * 16,
        "drums": "dddddddD dddddddD", "crash": "x------- x-------"}, GAME_B_THEME, lead_gain=0.9)
    return Piece("game_b", 150, intro, loop, BAND)


HIGHSCORES_CHORDS = "C G Am F C G F G Am F C G F G C G"
HIGHSCORES_THEME = (
    "E5:1 G5:1 C6:1.5 B5:.5 | D6:2 B5:1 G5:1 | C6:1 A5:1 E5:1.5 G5:.5 | F5:1 A5:1 C6:2 |"
    "E6:1.5 D6:.5 C6:1 G5:1 | B5:1 D6:1 G6:2 | A5:1 C6:1 F6:1 E6:1 | D6:3 r:1 |"
    "E6:1 C6:1 A5:1.5 B5:.5 | C6:1 A5:1 F5:2 | G5:1 C6:1 E6:1.5 D6:.5 | D6:2 B5:2 |"
    "A5:1 C6:1 F6:1.5 E6:.5 | D6:1 G6:1 F6:1 D6:1 | E6:2 G6:1 E6:1 | D6:2 r:2")


def highscores():
    intro = Section("C Am F G " + bars(HIGHSCORES_CHORDS, 0, 8), {
        "pad": "pppp pppppppp", "arp": "bbbb bbbbbbbb", "bass": "-sss ssssssss",
        "drums": "--gG hhhhhhhG", "crash": "--x- x-------"},
        "r:4 | r:4 | r:4 | r:4 |" + bars(HIGHSCORES_THEME, 0, 7) + "| D6:2 r:2", lead_gain=0.85,
        bells="E6:1 G6:1 C7:2 | A6:2 E6:2 | F6:1 A6:1 C7:2 | B6:2 r:2 |" + "|".join(["r:4"] * 8))
    loop = Section(HIGHSCORES_CHORDS, {
        "pad": "p" * 16, "arp": "b" * 16, "bass": "s" * 16,
        "drums": "gggggggG gggggggG", "crash": "x------- x-------"}, HIGHSCORES_THEME,
        bells="|".join(["r:4"] * 8) + "| E7:1 C7:1 A6:2 | r:4 | G6:1 C7:1 E7:2 | r:4 |"
                                      "A6:1 C7:1 F7:2 | r:4 | E7:2 G7:2 | r:4")
    return Piece("highscores", 105, intro, loop, BAND)


GAMEOVER_CHORDS = "Cm Ab Eb Bb Cm Ab Fm G"
GAMEOVER_THEME = ("G5:1.5 F5:.5 Eb5:1 D5:1 | C5:3 r:1 | Bb4:1 Eb5:1 G5:1 F5:1 | D5:3 r:1 |"
                  "Eb5:1.5 D5:.5 C5:1 G5:1 | Ab5:2 G5:1 F5:1 | F5:1.5 Eb5:.5 D5:1 C5:1 | B4:3 r:1")


def gameover():
    levels = dict(BAND, pad=0.32, bass=0.22, lead=0.6, hat=0.09, kick=0.55)
    intro = Section("Cm G " + GAMEOVER_CHORDS, {
        "pad": "pp pppppppp", "piano": "pp pppppppp", "bass": "rr rrrrrrrh",
        "drums": "-S -------S"},
        "C5:1 Eb5:1 G5:1 C6:1 | B5:3 r:1 |" + GAMEOVER_THEME, lead="piano", lead_gain=0.9)
    loop = Section(GAMEOVER_CHORDS, {
        "pad": "p" * 8, "piano": "p" * 8, "bass": "hhhhhhhh", "drums": "sssssssS"},
        GAMEOVER_THEME, lead="piano",
        bells="r:4 | r:4 | r:4 | r:4 | G6:2 Eb6:2 | C6:4 | F6:2 D6:2 | B5:4")
    return Piece("gameover", 84, intro, loop, levels, room=2.2)


def death():
    levels = dict(BAND, pad=0.34, bass=0.3, lead=0.5, tom=0.7, crash=0.35)
    section = Section("Cm Ab G Cm", {"pad": "pppp", "bass": "rrrr", "crash": "x--x"},
                      "G5:1 Eb5:1 C5:1 B4:1 | Ab4:3 C5:1 | B4:2 D5:1 B4:1 | C5:4")
    return Piece("death", 100, section, None, levels, room=2.4, tail=2.5)


PIECES = [title, game_a, game_b, highscores, gameover, death]


def build(out_dir):
    """Writes every piece; returns (sample name, file name, loops) for the music bank."""
    os.makedirs(out_dir, exist_ok=True)
    entries = []
    for make in PIECES:
        for filename in export(make(), out_dir):
            name = filename[:-len(".ogg")]
            entries.append((name, filename, name.endswith("_loop")))
    return entries

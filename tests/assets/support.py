"""Shared set-up of the data checks: Debian's python3 (with numpy and PIL) and the paths."""
import os
import sys

try:
    import numpy  # noqa: F401
    import PIL  # noqa: F401
except ImportError:
    # Another python3 earlier on PATH (a per-user install) lacks Debian's modules.
    if sys.executable != "/usr/bin/python3" and os.path.exists("/usr/bin/python3"):
        os.execv("/usr/bin/python3", ["/usr/bin/python3"] + sys.argv)
    raise

REPO = os.path.abspath(os.path.join(os.path.dirname(__file__), "..", ".."))
DATA = os.path.join(REPO, "data")
TOOLS = os.path.join(REPO, "tools", "assets")
sys.path.insert(0, TOOLS)

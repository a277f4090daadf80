"""The generators make the same bytes every time, and data/ holds what they make."""
import filecmp
import os
import subprocess
import sys
import tempfile
import unittest

import support


def tree(root):
    out = set()
    for base, _, files in os.walk(root):
        out.update(os.path.relpath(os.path.join(base, f), root) for f in files)
    return out


def differences(a, b, owned=None):
    """Files only in one tree, and files that differ. With `owned`, files of b outside the
    generated folders (made by hand) are left out."""
    files_a, files_b = tree(a), tree(b)
    if owned is not None:
        files_b = {f for f in files_b if f.split(os.sep)[0] in owned}
    changed = [f for f in sorted(files_a & files_b)
               if not filecmp.cmp(os.path.join(a, f), os.path.join(b, f), shallow=False)]
    return sorted(files_a ^ files_b), changed


class Determinism(unittest.TestCase):
    def test_two_runs_give_identical_files_equal_to_data(self):
        generate = os.path.join(support.TOOLS, "generate.py")
        with tempfile.TemporaryDirectory() as tmp:
            runs = [os.path.join(tmp, "a"), os.path.join(tmp, "b")]
            for out in runs:
                subprocess.run([sys.executable, generate, "--out", out], check=True,
                               stdout=subprocess.DEVNULL)
            missing, changed = differences(*runs)
            self.assertEqual((missing, changed), ([], []), "two runs differ")
            owned = {f.split(os.sep)[0] for f in tree(runs[0])}
            missing, changed = differences(runs[0], support.DATA, owned)
            self.assertEqual((missing, changed), ([], []),
                             "data/ is not what the generators make: run tools/assets/generate.py")


if __name__ == "__main__":
    unittest.main()

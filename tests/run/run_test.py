"""./run, in a folder where cmake, the program and the demonstration only tell that they were called."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]


class Run(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        self.script("run", (ROOT / "run").read_text())
        self.script("scripts/common.sh", (ROOT / "scripts/common.sh").read_text())
        self.script("scripts/demo", '#!/bin/sh\necho "demo $*"\n')
        self.script("build/release/varlo-pro", '#!/bin/sh\necho "program $*"\n')
        self.script("bin/cmake", '#!/bin/sh\necho "cmake $*" >>"$CALLS"\n')
        self.script("bin/dpkg-query", "#!/bin/sh\nprintf installed\n")
        self.script("bin/apt-get", "#!/bin/sh\nexit 1\n")

    def script(self, name, text):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        path.chmod(0o755)

    def run_it(self, *arguments, **environment):
        clean = {name: value for name, value in os.environ.items()
                 if name not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
        clean.update(environment, PATH=f"{self.folder}/bin:{os.environ['PATH']}", CALLS=str(self.folder / "calls"))
        return subprocess.run([shutil.which("bash"), str(self.folder / "run"), *arguments], env=clean,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=60)

    def built(self):
        calls = self.folder / "calls"
        return calls.read_text().splitlines() if calls.exists() else []

    def test_builds_the_program_and_starts_it(self):
        done = self.run_it("/profile=A B", DISPLAY=":9")
        self.assertEqual((done.returncode, done.stdout), (0, "program /profile=A B\n"))
        self.assertEqual(self.built(), ["cmake --preset release", "cmake --build --preset release --target varlo-pro"])

    def test_shows_the_demonstration_on_request(self):
        self.assertEqual(self.run_it("--demo", DISPLAY=":9").stdout, "demo \n")

    def test_without_a_display_says_so_and_shows_the_main_job(self):
        done = self.run_it()
        self.assertEqual(done.returncode, 0)
        first, second = done.stdout.splitlines()
        self.assertIn("There is no display here", first)
        self.assertEqual(second, "demo ")

    def test_without_a_display_options_are_answered(self):
        self.assertEqual(self.run_it("--version").stdout, "program --version\n")

    def test_without_a_display_a_profile_cannot_be_opened(self):
        done = self.run_it("/profile=A")
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("There is no display here", done.stderr)

    def test_a_named_platform_needs_no_display(self):
        self.assertEqual(self.run_it(QT_QPA_PLATFORM="offscreen").stdout, "program \n")


if __name__ == "__main__":
    unittest.main()

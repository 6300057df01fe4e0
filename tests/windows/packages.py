"""The portable archive and the installer under Wine: unpacked, installed, upgraded, uninstalled, data untouched."""

import hashlib
import pathlib
import shutil
import subprocess

from wine import Wine, windows_path

FILES = {"varlo-pro.exe", "Read Me.html", "Varlo Pro.chm"}
MOST_BYTES = 25_000_000


class Wrong(Exception):
    """What was found is not what the operator should get."""


def expect(condition, what):
    if not condition:
        raise Wrong(what)


def the_one(build, pattern):
    found = list(build.glob(pattern))
    expect(len(found) == 1, f"{len(found)} files fit {pattern}")
    return found[0]


def make_data(folder):
    """What an operator has beside his program; gives it as {path: digest}."""
    for name, text in {"global.ini": "[Profiles]\r\nAutoStart=0\r\n", "profiles/News/prefs.ini": "[Main]\r\n",
                       "profiles/News/lists/Members.vlo": "rosa@club.example\r\n",
                       "profiles/News/logs/StatusLog.txt": "a line\r\n", "licences/my own.doc": "x"}.items():
        path = folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, newline="")
    return data_in(folder)


def data_in(folder):
    return {str(path.relative_to(folder)): hashlib.sha256(path.read_bytes()).hexdigest()
            for path in sorted(folder.rglob("*"))
            if path.is_file() and path.relative_to(folder).parts[0] in ("global.ini", "profiles", "licences")
            and path.suffix != ".txt" or path.name == "StatusLog.txt"}


def programs_in(folder):
    return {path.name for path in folder.iterdir() if path.is_file()} - {"global.ini"}


def check_exe(build):
    exe = build / "varlo-pro.exe"
    size = exe.stat().st_size
    expect(size <= MOST_BYTES, f"the program has {size} bytes")
    headers = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", exe], capture_output=True, text=True, check=True).stdout
    libraries = {line.split()[-1].lower() for line in headers.splitlines() if "DLL Name:" in line}
    ours = {name for name in libraries if name.startswith(("lib", "qt"))}
    expect(not ours, f"the program needs {ours} beside it")
    expect("(Windows GUI)" in headers, "the program would open a console window")
    expect(b"activeCodePage" in exe.read_bytes(), "the program has no manifest")
    print(f"varlo-pro.exe: {size} bytes, {len(libraries)} libraries of Windows")


def check_portable(build, place):
    archive = the_one(build, "* portable.zip")
    subprocess.run(["unzip", "-q", archive, "-d", place], check=True)
    folder = place / "Varlo Pro"
    expect(programs_in(folder) == FILES, f"the archive holds {programs_in(folder)}")
    expect(len(list((folder / "licences").glob("*.txt"))) >= 8, "licences are missing")


def setup(wine, installer, folder, *switches):
    code, said = wine.run(installer, "/S", *switches, "/D=" + windows_path(folder), seconds=120)
    expect(code == 0, f"the installer ended with {code}: {said}")


def wait_gone(path):
    """The uninstaller goes on in a copy of itself."""
    import time
    deadline = time.monotonic() + 60
    while path.exists() and time.monotonic() < deadline:
        time.sleep(0.1)
    expect(not path.exists(), f"{path} is still there")


def uninstall(wine, folder):
    wine.run(folder / "uninstall.exe", "/S", seconds=120)
    wait_gone(folder / "uninstall.exe")


def registered(wine, root):
    key = root + r"\Software\Microsoft\Windows\CurrentVersion\Uninstall\Varlo Pro"
    return wine.run("reg", "query", key)[0] == 0


def check_setup(wine, build, place, root, *switches):
    """Installed into an empty folder, beside data, over itself, and away again."""
    installer = the_one(build, "* setup.exe")
    folder = place / "installed"
    setup(wine, installer, folder, *switches)
    expect(programs_in(folder) == FILES | {"uninstall.exe"}, f"installed are {programs_in(folder)}")
    expect(registered(wine, root), "Windows does not know of the installation")
    links = list(wine.drive_c().rglob("Varlo Pro.lnk"))
    expect(len(links) == 1, f"{len(links)} entries in the Start menu")
    before = make_data(folder)
    (folder / "varlo-pro.exe").write_bytes(b"an older version")
    setup(wine, installer, folder, *switches)
    expect((folder / "varlo-pro.exe").read_bytes() == (build / "varlo-pro.exe").read_bytes(), "no upgrade")
    expect(data_in(folder) == before, "the upgrade touched data")
    uninstall(wine, folder)
    expect(data_in(folder) == before, "the uninstaller touched data")
    expect(programs_in(folder) == set(), f"left behind: {programs_in(folder)}")
    expect(not registered(wine, root), "Windows still knows of the installation")
    expect(not list(wine.drive_c().rglob("Varlo Pro.lnk")), "the entry in the Start menu is left")


def check(build):
    place = pathlib.Path(build) / "tests" / "packages"
    shutil.rmtree(place, ignore_errors=True)
    place.mkdir(parents=True)
    try:
        check_exe(build)
        check_portable(build, place)
        with Wine(build / "wine") as wine:
            check_setup(wine, build, place / "me", "HKCU")
            check_setup(wine, build, place / "all", "HKLM", "/ALLUSERS")
    except Wrong as wrong:
        print("packages:", wrong)
        return False
    print("packages: unpacked, installed, upgraded, uninstalled, for one user and for all; data untouched")
    return True

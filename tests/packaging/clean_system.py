"""A clean system in a folder of its own, to install things in and to look for what they leave behind."""

import contextlib
import os
import pathlib
import shutil
import subprocess
import tempfile

USER = "player"
HOME = pathlib.Path("/home") / USER
PATH = "/usr/local/bin:/usr/bin:/bin:/usr/local/games:/usr/games"  # an ordinary user's, as Debian sets it
ROOT_PATH = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"

# What package management itself writes down, and folders that are not the system's.
KEPT_BY_APT = ("var/cache", "var/log", "var/lib/apt", "var/lib/dpkg")
NOT_THE_SYSTEM = ("proc", "sys", "dev", "run", "tmp", "home")


def run(*command, **options):
    """The finished process; raises with all that it printed when it failed."""
    done = subprocess.run([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False, **options)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(map(str, command))} ended with {done.returncode}:\n{done.stdout}")
    return done


def release_and_mirror():
    """This machine's release of Debian by its code name, and where its apt takes that from."""
    release = run("sh", "-c", ". /etc/os-release && echo $VERSION_CODENAME").stdout.strip()
    mirrors = run("apt-get", "indextargets", "--format", "$(REPO_URI)", "Created-By: Packages", "Origin: Debian",
                  f"Codename: {release}", "Label: Debian").stdout.split()
    if not mirrors:
        raise RuntimeError("apt knows no Debian mirror here: run apt-get update")
    return release, mirrors[0]


class CleanSystem:
    """Debian's smallest system, made by debootstrap from where this machine's apt takes its packages, with one
    ordinary user. A context manager; needs root. Of this machine's release, unless another one's code name is given.

        with CleanSystem() as system:
            system.run("apt-get", "install", "--yes", "hello")
    """

    def __init__(self, release=None):
        self.folder = None
        self.release = release

    def __enter__(self):
        # Not below /tmp, which may allow no device files.
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="zanto-root-", dir="/var/tmp"))
        try:
            self._make()
        except BaseException:
            self.remove()
            raise
        return self

    def __exit__(self, *_exception):
        self.remove()

    def _make(self):
        self.folder.chmod(0o755)
        own, mirror = release_and_mirror()
        run("debootstrap", "--variant=minbase", *(["--include=ca-certificates"] if "https:" in mirror else []),
            self.release or own, self.folder, mirror)
        apt = self.folder / "etc/apt"
        (apt / "apt.conf.d/90proxy").write_text("".join(
            line + "\n" for line in run("apt-config", "dump").stdout.splitlines()
            if line.lower().startswith(("acquire::http::proxy ", "acquire::https::proxy "))))
        run("mount", "-t", "proc", "proc", self.folder / "proc")
        self.run("useradd", "--create-home", "--shell", "/bin/bash", USER)
        self.run("apt-get", "update")

    def remove(self):
        with contextlib.suppress(RuntimeError):
            run("umount", self.folder / "proc")
        mounts = pathlib.Path("/proc/self/mounts").read_text(encoding="utf-8", errors="replace")
        if f" {self.folder}/" in mounts:
            raise RuntimeError(f"{self.folder} has something mounted below it; it is left as it is")
        shutil.rmtree(self.folder)

    def run(self, *command):
        """Runs a command in the system, as root."""
        return run("chroot", self.folder, *command, env={
            "PATH": ROOT_PATH, "HOME": "/nonexistent", "LC_ALL": "C.UTF-8", "DEBIAN_FRONTEND": "noninteractive"})

    def as_user(self, folder):
        """The beginning of a command that the ordinary user gives in that folder, as for Game's prefix."""
        return ["chroot", f"--userspec={USER}:{USER}", str(self.folder), "/usr/bin/env", "-C", str(folder),
                f"HOME={HOME}", f"USER={USER}", f"PATH={PATH}"]

    def path(self, inside):
        """Where a file of the system is, seen from outside."""
        return self.folder / str(inside).lstrip("/")

    def give(self, inside, text):
        """Writes a file of the ordinary user's."""
        path = self.path(inside)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)
        self.run("chown", "-R", f"{USER}:{USER}", HOME)

    def files(self):
        """The names of all that belongs to the system."""
        found = set()
        for place, folders, files in os.walk(self.folder):
            below = os.path.relpath(place, self.folder)
            if below == ".":
                folders[:] = [name for name in folders if name not in NOT_THE_SYSTEM]
            folders[:] = [name for name in folders if os.path.normpath(f"{below}/{name}") not in KEPT_BY_APT]
            found.update(os.path.normpath(f"{below}/{name}") for name in [*folders, *files])
        return found

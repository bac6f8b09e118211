"""A throw-away MariaDB: an ordinary process on a unix socket in a folder of the test's own, without network."""

import ctypes
import os
import shutil
import signal
import subprocess
import sys


class Server:
    """A MariaDB of its own in strict mode. Ends with this process, whatever becomes of it."""

    def __init__(self, folder):
        self.folder = folder
        self.socket = folder / "socket"
        self.log = folder / "log"
        self.process = None

    def start(self):
        data = self.folder / "data"
        # One of its own: a server that starts deletes what others have in a common one.
        temporary = self.folder / "tmp"
        temporary.mkdir()
        as_root = ["--user=root"] if os.geteuid() == 0 else []
        # By force: it would insist on a name of the machine that can be looked up.
        installed = subprocess.run(
            [tool("mariadb-install-db"), "--no-defaults", *as_root, "--basedir=/usr", f"--datadir={data}",
             f"--tmpdir={temporary}", "--auth-root-authentication-method=normal", "--skip-test-db", "--force"],
            capture_output=True, text=True,
        )  # fmt: skip
        if installed.returncode != 0:
            sys.exit(f"mariadb-install-db failed:\n{installed.stdout}{installed.stderr}")
        with open(self.log, "wb") as log:
            self.process = subprocess.Popen(
                [tool("mariadbd"), "--no-defaults", *as_root, f"--datadir={data}", f"--tmpdir={temporary}",
                 "--skip-networking", f"--socket={self.socket}", f"--pid-file={self.folder}/pid",
                 "--innodb-buffer-pool-size=64M", "--innodb-flush-log-at-trx-commit=0", "--sql-mode=STRICT_ALL_TABLES"],
                stdout=log, stderr=log, preexec_fn=die_with_parent,
            )  # fmt: skip
        self.wait_until_ready()

    def wait_until_ready(self):
        while self.process.poll() is None:
            if self.client("-e", "SELECT 1").returncode == 0:
                return
        sys.exit(f"mariadbd ended:\n{self.log.read_text()}")

    def stop(self):
        if self.process and self.process.poll() is None:
            self.process.terminate()
            self.process.wait()

    def command(self, *options):
        return [tool("mariadb"), "--no-defaults", f"--socket={self.socket}", "--user=root", *options]

    def client(self, *options, **more):
        command = self.command(*options)
        return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, **more)

    def ask(self, statement, database="board"):
        """The rows of an answer, each value as text, NULL as None."""
        where = [f"--database={database}"] if database else []
        answer = self.client("-NB", "--default-character-set=utf8mb4", "-e", statement, *where)
        if answer.returncode != 0:
            raise AssertionError(answer.stdout.decode())
        lines = answer.stdout.decode().splitlines()
        return [[None if value == "NULL" else value for value in line.split("\t")] for line in lines]


def tool(name):
    found = shutil.which(name, path=os.environ.get("PATH", "") + ":/usr/sbin:/usr/bin")
    if not found:
        sys.exit(
            f"{name} is missing. Install mariadb-server-core and mariadb-client-core, "
            "or set TESSALY_SKIP_DATABASE=1 to leave the database tests out."
        )
    return found


def die_with_parent():
    pr_set_pdeathsig = 1
    ctypes.CDLL(None).prctl(pr_set_pdeathsig, signal.SIGKILL)

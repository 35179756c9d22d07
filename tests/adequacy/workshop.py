"""A copy of the tree in which one line at a time is wrong."""

import pathlib
import resource
import shutil
import subprocess

# Which test programs may notice, the nearest ones first.
_NEAR_FOLDER = {
    "plugin": ["plugin_tests"],
    "view": ["view_tests", "thread_tests", "plugin_tests"],
    "host/net": ["host_net_tests", "thread_tests", "pages_tests", "adservice_tests"],
}
_ALWAYS = ["plugin_tests", "view_tests", "delivery_tests", "requests_tests"]
_MEMORY = 4 << 30
_PATIENCE = 300  # seconds; the slowest of them takes a tenth


def _suites(file):
    folder = str(pathlib.PurePath(file).parent)
    near = _NEAR_FOLDER.get(folder, ["host_" + folder.split("/")[-1] + "_tests"])
    return list(dict.fromkeys(near + _ALWAYS))


def _every_suite(root):
    folders = [path.name for path in (root / "host").iterdir() if path.is_dir()]
    names = [f"host_{folder}_tests" for folder in folders]
    return sorted({*names, *_ALWAYS, *(name for names in _NEAR_FOLDER.values() for name in names)})


class Workshop:
    """Owner: one thread. Throws CalledProcessError if what is right cannot be built or fails."""

    def __init__(self, root, folder):
        self._source = folder / "source"
        self._build = folder / "build"
        shutil.rmtree(self._source, ignore_errors=True)
        files = subprocess.run(["git", "ls-files", "-z"], cwd=root, check=True, capture_output=True)
        for name in files.stdout.decode().rstrip("\0").split("\0"):
            target = self._source / name
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(root / name, target)
        self._configure()
        every = _every_suite(root)
        self._compile(every).check_returncode()
        for suite in every:
            if self._run(suite) != "passed":
                raise RuntimeError(f"{suite} fails before anything is made wrong")

    def judge(self, file, mutant):
        """What becomes of a mutant: "noticed", "hung", "survived" or "stillborn"."""
        path = self._source / file
        right = path.read_text()
        lines = right.split("\n")
        lines[mutant.line - 1] = mutant.after
        path.write_text("\n".join(lines))
        try:
            suites = _suites(file)
            if self._compile(suites).returncode != 0:
                return "stillborn"
            for suite in suites:
                if (verdict := self._run(suite)) != "passed":
                    return verdict
            return "survived"
        finally:
            path.write_text(right)

    def _configure(self):
        # Tests that link a library which changed inside need no new link.
        subprocess.run(
            ["cmake", "-S", self._source, "-B", self._build, "-G", "Ninja", "--log-level=WARNING",
             "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS=-O0 -g0",
             "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", "-DVIEWCONNECTOR_WERROR=OFF"],
            check=True, stdout=subprocess.DEVNULL)

    def _compile(self, suites):
        return subprocess.run(["cmake", "--build", self._build, "--target", *suites],
                              capture_output=True, check=False)

    def _run(self, suite):
        try:
            ended = subprocess.run(
                [self._build / "tests" / suite, "--gtest_fail_fast", "--gtest_brief=1"],
                capture_output=True, check=False, timeout=_PATIENCE, cwd=self._build,
                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (_MEMORY, _MEMORY)))
        except subprocess.TimeoutExpired:
            return "hung"
        return "passed" if ended.returncode == 0 else "noticed"

"""A copy of the tree in which one line at a time is wrong, and what the tests make of it."""

import os
import pathlib
import resource
import shutil
import subprocess
import tempfile

# Which test programs may notice, the nearest ones first.
_NEAR_FOLDER = {
    "plugin": ["plugin_tests"],
    "view": ["view_tests", "thread_tests", "plugin_tests"],
    "host/net": ["host_net_tests", "thread_tests", "pages_tests", "adservice_tests", "inbound_campaign"],
}
_ALWAYS = ["view_tests", "plugin_tests", "requests_tests", "delivery_tests"]
_MEMORY = 4 << 30
_PATIENCE = 300  # seconds; the slowest of them takes a tenth


def _suites(file):
    folder = str(pathlib.PurePath(file).parent)
    near = _NEAR_FOLDER.get(folder, ["host_" + folder.split("/")[-1] + "_tests"])
    return list(dict.fromkeys(near + _ALWAYS))


class Workshop:
    """Builds one mutant after the other. Throws CalledProcessError if what is right cannot be built."""

    def __init__(self, root, folder):
        subprocess.run(["bash", "-c", '. scripts/common.sh && install_packages "${build_packages[@]}" '
                        '"${test_packages[@]}" clang-14 lld-14'], cwd=root, check=True)
        self._folder = folder
        self._source = folder / "source"
        self._build = folder / "build"
        shutil.rmtree(folder, ignore_errors=True)
        files = subprocess.run(["git", "ls-files", "-z"], cwd=root, check=True, capture_output=True)
        for name in files.stdout.decode().rstrip("\0").split("\0"):
            target = self._source / name
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy2(root / name, target, follow_symlinks=False)
        self._configure()

    def unchanged(self, files):
        """A trial of what is right, by each program that may judge a mutant of these files."""
        suites = sorted({suite for file in files for suite in _suites(file)})
        self._compile(suites).check_returncode()
        return Trial(self._build, suites, self._folder)

    def mutated(self, file, mutant):
        """A trial of a mutant, or None if it does not compile."""
        path = self._source / file
        right = path.read_text()
        lines = right.split("\n")
        lines[mutant.line - 1] = mutant.after
        path.write_text("\n".join(lines))
        try:
            suites = _suites(file)
            if self._compile(suites).returncode != 0:
                return None
            return Trial(self._build, suites, self._folder)
        finally:
            path.write_text(right)

    def _configure(self):
        # Tests that link a library which changed inside need no new link. Clang and its linker are the
        # faster ones.
        subprocess.run(
            ["cmake", "-S", self._source, "-B", self._build, "-G", "Ninja", "--log-level=WARNING",
             "-DCMAKE_CXX_COMPILER=clang++-14", "-DCMAKE_BUILD_TYPE=Debug",
             "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -g0", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
             *(f"-DCMAKE_{kind}_LINKER_FLAGS=-fuse-ld=lld" for kind in ("EXE", "SHARED", "MODULE")),
             "-DVIEWCONNECTOR_WERROR=OFF"],
            check=True, stdout=subprocess.DEVNULL)

    def _compile(self, suites):
        return subprocess.run(["cmake", "--build", self._build, "--target", *suites],
                              capture_output=True, check=False)


class Trial:
    """Programs as they were when this was made: a linker leaves the file of before to who holds it."""

    def __init__(self, build, suites, folder):
        self._suites = suites
        self._folder = pathlib.Path(tempfile.mkdtemp(dir=folder))
        for path in [*build.glob("lib/*.so*"), *(build / "tests" / suite for suite in suites)]:
            os.link(path, self._folder / path.name, follow_symlinks=False)

    def judge(self):
        """What the tests say: "noticed", "hung" or "survived". They say it twice, since a test may be
        late for once where many run."""
        try:
            for suite in self._suites:
                if self._run(suite) != "passed" and (verdict := self._run(suite)) != "passed":
                    return verdict
            return "survived"
        finally:
            shutil.rmtree(self._folder)

    def _run(self, suite):
        try:
            ended = subprocess.run(
                [self._folder / suite, "--gtest_fail_fast", "--gtest_brief=1"],
                capture_output=True, check=False, timeout=_PATIENCE, cwd=self._folder,
                env={**os.environ, "LD_LIBRARY_PATH": str(self._folder)},
                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (_MEMORY, _MEMORY)))
        except subprocess.TimeoutExpired:
            return "hung"
        return "passed" if ended.returncode == 0 else "noticed"

"""Why a mutant that no test notices is none that a test should notice."""


class Reasons:
    """Reads groups of four lines: file, line as it is, as it is made wrong, reason. Groups are
    separated by an empty line, comments begin with #."""

    def __init__(self, path):
        self._reasons = {}
        lines = [line for line in path.read_text().split("\n") if not line.startswith("#")]
        for group in "\n".join(lines).strip().split("\n\n"):
            if not group.strip():
                continue
            parts = [part.strip() for part in group.strip().split("\n")]
            if len(parts) != 4:
                raise ValueError(f"{path}: a group of four lines is expected: {group}")
            self._reasons[tuple(parts[:3])] = parts[3]

    def explain(self, file, mutant):
        return self._reasons.get((file, mutant.before.strip(), mutant.after.strip()))

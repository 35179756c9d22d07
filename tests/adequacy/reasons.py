"""Why what no test notices is nothing that a test should notice."""


class Reasons:
    """Reads groups of lines, separated by an empty line: the last line is the reason, those before say
    what it is for. Comments begin with #."""

    def __init__(self, path):
        self._reasons = {}
        self._used = set()
        lines = [line for line in path.read_text().split("\n") if not line.startswith("#")]
        for group in "\n".join(lines).strip().split("\n\n"):
            if group.strip():
                *subject, reason = [part.strip() for part in group.strip().split("\n")]
                self._reasons[tuple(subject)] = reason

    def explain(self, *subject):
        subject = tuple(part.strip() for part in subject)
        self._used.add(subject)
        return self._reasons.get(subject)

    def unused(self):
        """What has a reason, other than chance, and was not asked for."""
        return [": ".join(subject) for subject, reason in self._reasons.items()
                if subject not in self._used and not reason.startswith("By chance: ")]

"""The measurements that the benchmark programs left in a folder, and ratios between them."""

import json
import pathlib
import re
import statistics


class Measurements:
    """All repetitions of all benchmarks, by name: "topic/contender" or "topic/contender/argument"."""

    def __init__(self, folder):
        self._runs = {}
        for file in sorted(pathlib.Path(folder).glob("*.json")):
            for run in json.loads(file.read_text()).get("benchmarks", []):
                if run.get("run_type") == "iteration":
                    name = re.sub(r"/(iterations:\d+|manual_time|real_time)", "", run["name"])
                    self._runs.setdefault(name, []).append(run)

    def has(self, *names):
        return all(name in self._runs for name in names)

    def values(self, name, counter="real_time"):
        runs = sorted(self._runs[name], key=lambda run: run["repetition_index"])
        return [run[counter] for run in runs]

    def median(self, name, counter="real_time"):
        return statistics.median(self.values(name, counter))


class Ratio:
    """A ratio of medians, with the range of the middle half of the ratios of single repetitions."""

    def __init__(self, above, below):
        self.value = statistics.median(above) / statistics.median(below)
        single = sorted(a / b for a, b in zip(above, below))
        self.low, self.high = single[len(single) // 4], single[(3 * len(single) - 1) // 4]

    def __str__(self):
        return f"{self.value:.2f} ({self.low:.2f} to {self.high:.2f})"

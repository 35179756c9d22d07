"""Counts of the hot paths, held against those that are recorded."""

TOLERATED = 0.03  # what a path may take more than recorded
UPDATE = "record it with benchmarks/instructions/count --update"


def change(counted, recorded):
    return (counted - recorded) / recorded


def faults(counted, recorded):
    """A line for each path that is worse than it may be, or that cannot be compared."""
    lines = []
    for path, instructions in counted.items():
        if path not in recorded:
            lines.append(f"{path}: is not in counts.json: {UPDATE}")
        elif change(instructions, recorded[path]) > TOLERATED:
            lines.append(f"{path}: {instructions} instructions, {recorded[path]} are recorded: "
                         f"mend it, or, if it is worth it, {UPDATE}")
    lines += [f"{path}: is in counts.json, but was not counted: if it is gone, {UPDATE}"
              for path in recorded if path not in counted]
    return lines


def table(counted, recorded):
    """The counts for people; a path that is in one of the two only has a dash for the other."""
    paths = list(counted) + [path for path in recorded if path not in counted]
    width = max(len(path) for path in paths)
    rows = [f"{'path':{width}}  {'own instructions':>16}  {'in the file':>11}  {'change':>8}"]
    for path in paths:
        ours, theirs = counted.get(path, "-"), recorded.get(path, "-")
        moved = f"{change(ours, theirs):+.1%}" if path in counted and path in recorded else "-"
        rows.append(f"{path:{width}}  {ours:>16}  {theirs:>11}  {moved:>8}")
    return "\n".join(rows)

"""What was measured, as tables for people."""


def table(title, columns, rows):
    """Each row begins with its name."""
    cells = [[title, *columns]] + [[str(cell) for cell in row] for row in rows]
    widths = [max(len(row[i]) for row in cells) for i in range(len(cells[0]))]
    return "\n".join(
        "  ".join(cell.ljust(width) if i == 0 else cell.rjust(width)
                  for i, (cell, width) in enumerate(zip(row, widths)))
        for row in cells) + "\n"


def times(milliseconds):
    rows = [(step, *(f"{spread[key]:.2f}" for key in ("median", "least", "most")))
            for step, spread in milliseconds.items()]
    return table("ms", ("median", "least", "most"), rows)


def memory(kilobytes):
    """What the plug-in adds, when it is loaded and when it has sent its first message."""
    rows = [(cause, *(added[point][kind] for kind in ("rss", "own")
                      for point in ("object", "first message")))
            for cause, added in kilobytes.items()]
    rows.append(("sum", *(sum(row[i] for row in rows) for i in range(1, 5))))
    return table("KB added", ("loaded", "sent", "own, loaded", "own, sent"), rows)


def instructions(steps):
    causes = list(dict.fromkeys(cause for costs in steps.values() for cause in costs))
    rows = [(cause, *(f"{costs.get(cause, 0):,}" for costs in steps.values())) for cause in causes]
    return table("instructions", list(steps), rows)


def sizes(title, bytes_by_name):
    return table(title, ("bytes",), [(name, f"{size:,}") for name, size in bytes_by_name.items()])

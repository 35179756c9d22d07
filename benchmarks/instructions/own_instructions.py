"""What of callgrind's profiles is the code of this tree."""

import collections
import os
import re

# What is counted apart, so that a large part does not hide what a small one takes more.
PARTS = {"plugin": "plug-in", "view": "plug-in", "host": "host", "log4qt": "host"}

# The network thread goes round these as often as the scheduler pleases: whenever a socket is ready,
# and when a deadline may be over. What they call for a request is counted.
LOOP = re.compile(
    r"(HttpDaemon::(run|waitingTime)|HttpConnections::(nextDeadline|cutOverdue)|WakeUp::waitFor)\("
)

TRIGGER = "desc: Trigger: Client Request: "
COST = re.compile(r"[+*-]?\d* (\d+)")


def name_of(lines):
    """The name that the profile was asked for under; none for that of the program's end."""
    named = (line for line in lines if line.startswith(TRIGGER))
    return next(named, TRIGGER)[len(TRIGGER) :].rstrip("\n") or None


def self_costs(lines):
    """The instructions that each function itself executes, by function and source file: inlined
    code counts for the function that it is inlined into, and for the file that it is from."""
    costs = collections.Counter()
    source = function = ""
    is_of_a_call = False
    for line in lines:
        key, _, value = line.rstrip("\n").partition("=")
        if key in ("fl", "fi", "fe"):
            source = value
        elif key == "fn":
            function = value
        elif key == "calls":
            is_of_a_call = True  # the next line is the cost of what was called
        elif cost := COST.fullmatch(key):
            if not is_of_a_call:
                costs[function, source] += int(cost.group(1))
            is_of_a_call = False
    return costs


def part_of(source, tree):
    """The part of this tree that a source file is of, or none; a build folder's are generated."""
    if not os.path.isabs(source):
        return None
    folder = os.path.relpath(os.path.realpath(source), tree).split(os.sep)[0]
    return PARTS.get(folder)


def own_instructions(lines, tree):
    """The instructions in a profile, written without compressed names, that are of this tree, by
    the part that they are of."""
    sums = collections.Counter()
    for (function, source), cost in self_costs(lines).items():
        part = part_of(source, tree)
        if part and not LOOP.match(function):
            sums[part] += cost
    return sums

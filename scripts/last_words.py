#!/usr/bin/env python3
"""Prints what each failed test of a JUnit file said last, since that stands far above the end of a log.

    scripts/last_words.py results.xml
"""
import sys
import xml.etree.ElementTree as ElementTree

LINES = 40

for case in ElementTree.parse(sys.argv[1]).iter("testcase"):
    if case.get("status") == "fail":
        print(f"--- {case.get('name')} said last:")
        print("\n".join(case.findtext("system-out", "").splitlines()[-LINES:]))

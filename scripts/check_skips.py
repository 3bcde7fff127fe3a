#!/usr/bin/env python3
"""Fails when a test was skipped for a reason other than one it cannot help where it runs.

Usage: scripts/check_skips.py JUNIT_XML   (the file scripts/test.sh has ctest write)

A skip is accepted only when its output gives one of the reasons below; each names a test that
cannot run on the machine by nature, not for want of something CI could install.
"""
import re
import sys
import xml.etree.ElementTree as ET

ACCEPTED = [
    # An unreadable directory is readable to root, so its failure path cannot be reached.
    re.compile(r"root reads every directory"),
]


def main() -> int:
    if len(sys.argv) != 2:
        print(__doc__.strip().splitlines()[2], file=sys.stderr)
        return 2
    bad = []
    for case in ET.parse(sys.argv[1]).getroot().iter("testcase"):
        if case.find("skipped") is None:
            continue
        output = case.findtext("system-out") or ""
        if not any(reason.search(output) for reason in ACCEPTED):
            bad.append(case.get("name"))
    for name in bad:
        print(f"check_skips: {name} was skipped, and nothing stops it from running here",
              file=sys.stderr)
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())

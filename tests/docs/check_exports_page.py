"""Every test that the page about the exports names must exist."""

import pathlib
import re
import sys

TEST = re.compile(r"^TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)", re.MULTILINE)
NAMED = re.compile(r"`(\w+\.\w+)`")


def main() -> int:
    root = pathlib.Path(sys.argv[1])
    existing = {
        f"{suite}.{name}"
        for path in (root / "tests").rglob("*.cpp")
        for suite, name in TEST.findall(path.read_text(encoding="utf-8"))
    }
    named = set(NAMED.findall((root / "docs" / "exports.md").read_text(encoding="utf-8")))
    missing = sorted(named - existing)
    for name in missing:
        print(f"docs/exports.md names {name}, which is no test")
    print(f"{len(named)} tests named, {len(missing)} of them missing")
    return 1 if missing or not named else 0


if __name__ == "__main__":
    sys.exit(main())

"""Runs the Python example of a documentation page, so that the page and the module cannot
drift apart: every ```python block of the page, in order, in one namespace, from a scratch
folder that sees the bundled examples as ./examples. The example's picture must appear.

Usage: run_doc_example.py PAGE EXAMPLES_DIR. Exit code 77 (skipped) without matplotlib or NumPy.
"""
import os
import re
import sys
import tempfile

try:
    import matplotlib  # noqa: F401
    import numpy  # noqa: F401
except ImportError as e:
    print(f"skipped: {e}")
    sys.exit(77)


def main(page, examples):
    with open(page, encoding="utf-8") as f:
        blocks = re.findall(r"^```python\n(.*?)^```", f.read(), re.S | re.M)
    if not blocks:
        sys.exit(f"{page} holds no python block")
    with tempfile.TemporaryDirectory() as scratch:
        os.chdir(scratch)
        os.symlink(examples, "examples")
        namespace = {"__name__": "__main__"}
        for block in blocks:
            exec(compile(block, page, "exec"), namespace)
        if not os.path.getsize("power_over_speed.png"):
            sys.exit("the example wrote an empty picture")


if __name__ == "__main__":
    main(*sys.argv[1:3])

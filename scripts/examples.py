"""Compiles the examples of the documentation: examples.py COMPILER OPTION...

In headers, the examples are the \\code blocks. A block that ends with a semicolon becomes the body of a member function;
any other block is compiled at file level. Both follow docs/example_context.h. A C++ block in docs/*.md is a whole file.
"""
import pathlib
import re
import subprocess
import sys


def header_blocks():
    for header in sorted(pathlib.Path("include").rglob("*.h")):
        lines, begin = header.read_text(encoding="utf-8").split("\n"), None
        for number, line in enumerate(lines, 1):
            if re.match(r"\s*/// [\\@]code\b", line):
                begin = number + 1
            elif re.match(r"\s*/// [\\@]endcode\b", line):
                text = "\n".join(re.sub(r"^\s*/// ?", "", example) for example in lines[begin - 1:number - 1])
                yield f'#line {begin} "{header}"\n', text + "\n"


def page_blocks():
    for page in sorted(pathlib.Path("docs").glob("*.md")):
        text = page.read_text(encoding="utf-8")
        for block in re.finditer(r"^```cpp\n(.*?)^```", text, re.M | re.S):
            yield f'#line {text.count(chr(10), 0, block.start()) + 2} "{page}"\n', block[1]


def header_source():
    parts = ['#include "docs/example_context.h"\n']
    for index, (place, text) in enumerate(header_blocks()):
        if re.search(r"[;}]\s*\Z", text):
            parts.append(f"struct Example{index} : ExampleContext\n{{\nauto Run()\n{{\n{place}{text}}}\n}};\n")
        else:
            parts.append(f"namespace example{index}\n{{\n{place}{text}}}\n")
    return "".join(parts)


def main():
    sources = [header_source(), *(place + text for place, text in page_blocks())]
    processes = [subprocess.Popen([*sys.argv[1:], "-x", "c++", "-fsyntax-only", "-"], stdin=subprocess.PIPE, text=True)
                 for _ in sources]
    for process, source in zip(processes, sources):
        process.communicate(source)
    sys.exit(max(process.returncode for process in processes))


main()

#!/usr/bin/python3
"""Writes a GoogleTest test for each function whose doc comment has rows "in => out": generate.py ROOT OUTPUT HEADER...

Rows are the lines of a doc comment that are indented by five spaces and have an arrow, or begin with a quotation mark
or a parenthesis; other lines so indented are code. More than one row may stand in a line. Both sides are C++: string
literals, then a string literal, true, false, a string and a flag, or a list in braces. Rows behind the line "On the
disk:" are for readers only, up to the end of their paragraph. A line that cannot be read is an error.
"""

import re
import sys

STRING = r'L?"(?:\\.|[^"\\])*"'
INPUT = rf"{STRING}|\({STRING}(?:, *{STRING})*\)"
OUTPUT = rf"{STRING}, (?:true|false)|{STRING}|true|false|\{{[^}}]*\}}"
ROW = re.compile(rf"({INPUT})\s*=>\s*({OUTPUT})(?=\s{{2}}|\s*$)\s*")
LOOKS_LIKE_ROW = re.compile(r'///     (?:["(]|L"|.*=>)')
FUNCTION = re.compile(r"^(?:FRAMEWORKBASE_EXPORT )?[\w:<> ]+[ &](\w+)\(")


class UnreadableRow(Exception):
    """Says where a row is that cannot be read."""


def rows_of_line(text, place):
    """Returns pairs of input and output."""
    rows = []
    position = 0
    while position < len(text):
        match = ROW.match(text, position)
        if match is None:
            raise UnreadableRow(f"{place}: error: cannot read the row: {text[position:]}")
        rows.append(match.groups())
        position = match.end()
    return rows


def assertion(function, given, wanted, place):
    arguments = re.sub(STRING, r"\g<0>s", given.strip("()") if given.startswith("(") else given)
    call = f"{function}({arguments})"
    if wanted.startswith("{") or ", " in re.sub(STRING, "", wanted):
        wanted = f"decltype({call}){{{wanted.strip('{}')}}}"
    return f'    EXPECT_EQ(({call}), ({wanted})) << "{place}";\n'


def tests_of_header(path, name):
    """Returns the tests of one header as C++."""
    tests = ""
    rows = []
    for_readers = False
    with open(path, encoding="utf-8") as header:
        for number, line in enumerate(header, 1):
            line = line.rstrip()
            place = f"{name}:{number}"
            function = FUNCTION.match(line)
            if line == "///     On the disk:":
                for_readers = True
            elif LOOKS_LIKE_ROW.match(line) and not for_readers:
                rows += [(given, wanted, place) for given, wanted in rows_of_line(line[8:], place)]
            elif not line.startswith("///     "):
                for_readers = False
                if "=>" in line and line.startswith("///"):
                    raise UnreadableRow(f"{place}: error: a row is indented by five spaces")
            if rows and function:
                assertions = "".join(assertion(function[1], *row) for row in rows)
                tests += f"TEST(RowsTest, {function[1]}) {{\n{assertions}}}\n\n"
                rows = []
            elif rows and not line.startswith("///"):
                raise UnreadableRow(f"{rows[0][2]}: error: no function follows the row")
    return tests


def main():
    root, output, *headers = sys.argv[1:]
    includes = "".join(f"#include <{name}>\n" for name in headers)
    tests = "".join(tests_of_header(f"{root}/{name}", name) for name in headers)
    with open(output, "w", encoding="utf-8") as file:
        file.write(f'{includes}\n#include "tests/rows/Overloads.h"\n\n{tests}')


try:
    main()
except UnreadableRow as error:
    sys.exit(str(error))

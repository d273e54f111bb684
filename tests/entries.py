"""Which entries of ctest a name stands for, from what `ctest --show-only=json-v1` writes.

    entries.py names NAME    their names, one a line
    entries.py files NAME    the files of the build that they need
    entries.py filter NAME   the tests that they run, as one filter of GoogleTest
    entries.py subjects ''   what there is to choose from: all names of entries without their level, all levels and all labels

NAME is a level (window, package) or another label, or the name of entries, with or without their level, or its first words: "batch"
stands for app.batch, app.batch_stop, window.batch_timer and so on, "window.batch" for those of them that are in the
window's tests. With no such entry nothing is written.
"""
import json
import sys

FILTER = "--gtest_filter="


def properties(entry, name):
    for found in entry["properties"]:
        if found["name"] == name:
            return found["value"]
    return []


def level(entry):
    return entry["name"].partition(".")[0]


def subject(entry):
    return entry["name"].partition(".")[2] or entry["name"]


def is_meant(entry, name):
    return name in (level(entry), *properties(entry, "LABELS")) or any(
        known == name or known.startswith(name + "_") for known in (entry["name"], subject(entry)))


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    what, name = sys.argv[1:]
    everything = json.load(sys.stdin)["tests"]
    chosen = [entry for entry in everything if is_meant(entry, name)]
    if what == "names":
        lines = [entry["name"] for entry in chosen]
    elif what == "files":
        lines = sorted({file for entry in chosen for file in properties(entry, "REQUIRED_FILES")})
    elif what == "filter":
        arguments = [argument for entry in chosen for argument in entry["command"]]
        lines = [":".join(argument.removeprefix(FILTER) for argument in arguments if argument.startswith(FILTER))]
    elif what == "subjects":
        lines = sorted({subject(entry) for entry in everything}
                       | {level(entry) for entry in everything}
                       | {label for entry in everything for label in properties(entry, "LABELS")})
    else:
        sys.exit(__doc__)
    for line in lines:
        print(line)


if __name__ == "__main__":
    main()

"""Prints each include that goes from a room of the house up to a higher one, unless docs/ARCHITECTURE.md has a line
"- `FILE OR FOLDER` → `ROOM`: reason" for it; prints also those lines that no include needs."""
import pathlib
import re

# From the lowest to the highest. Programs are not in the list: they may include all public headers.
FLOORS = ["platform", "basetools", "mathtools", "dataobjects", "framework", "videorendererobjects", "devices", "gui",
          "framework/commands", "widgets", "host"]


def floor_of(path):
    """The room that a path below include/quillmarsh or source lies in."""
    parts = path.split("/")
    if parts[:2] == ["framework", "commands"]:
        return "framework/commands"
    return parts[0]


def upward_includes():
    for base in ("include/quillmarsh", "source"):
        for file in sorted(pathlib.Path(base).rglob("*")):
            if file.suffix not in (".h", ".cpp") or file.name in ("quillmarsh.h", "host.h"):
                continue
            room = floor_of(file.relative_to(base).as_posix())
            text = file.read_text(encoding="utf-8")
            for included in re.findall(r'^\s*#\s*include\s*[<"](?:quillmarsh|source)/([^>"]+)[>"]', text, re.M):
                other = floor_of(included)
                if other in FLOORS and FLOORS.index(other) > FLOORS.index(room):
                    yield file.as_posix(), other


def main():
    text = pathlib.Path("docs/ARCHITECTURE.md").read_text(encoding="utf-8")
    doors = re.findall(r"^- `([^`]+)` → `([^`]+)`: ", text, re.M)
    used = set()
    for file, room in upward_includes():
        door = next((door for door in doors if door[1] == room and (file + "/").startswith(door[0] + "/")), None)
        if door:
            used.add(door)
        else:
            print(f"{file} includes the higher room {room} without a reason in docs/ARCHITECTURE.md")
    for path, room in doors:
        if (path, room) not in used:
            print(f"docs/ARCHITECTURE.md: no include needs the line {path} → {room}")


if __name__ == "__main__":
    main()

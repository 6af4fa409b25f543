"""Shows values of the library in GDB in their usual form. It is installed where GDB loads it with the library."""
import gdb
import gdb.printing

COMPONENTS = {"vec2": "xy", "vec3": "xyz", "vec4": "xyzw", "quat": "xyzw", "color4f": "rgba", "color4b": "rgba"}
DIMENSIONS = ("numLayers_", "numRows_", "numColumns_")
# The member of NamedParameter with the value, by the value's type.
PARAMETER_MEMBERS = (None, "pointer", "boolean", "integer", "uInteger", "real")


def number_text(value):
    return f"{float(value):.9g}" if value.type.strip_typedefs().code == gdb.TYPE_CODE_FLT else str(int(value))


def components_text(value):
    names = COMPONENTS[value.type.strip_typedefs().name.split("::")[-1]]
    return "(" + ", ".join(number_text(value[name]) for name in names) + ")"


def format_text(value):
    """Returns the name of a sample format, such as "A8R8G8B8"."""
    return str(value).rsplit("e_format_", 1)[-1]


def has_member(type_, name):
    return any(field.name == name or (field.is_base_class and has_member(field.type, name)) for field in type_.fields())


def behind_reference(value):
    return value.referenced_value() if value.type.strip_typedefs().code == gdb.TYPE_CODE_REF else value


class Text:
    """A printer made of a function that converts the value to a text."""

    def __init__(self, text, hint=None):
        self.text, self.hint = text, hint

    def __call__(self, value):
        return Text(lambda: self.text(behind_reference(value)), self.hint)

    def to_string(self):
        return self.text()

    def display_hint(self):
        return self.hint


class Matrix:
    def __init__(self, value):
        self.rows = behind_reference(value)["rows_"]

    def to_string(self):
        return None

    def children(self):
        first, last = self.rows.type.range()
        return ((f"row {index}", self.rows[index]) for index in range(first, last + 1))


def wide_text(value):
    units = value["_M_dataplus"]["_M_p"]
    data = gdb.selected_inferior().read_memory(int(units), 2 * int(value["_M_string_length"]))
    return bytes(data).decode("utf-16-le", "replace")


def narrow_text(value):
    return value["_M_dataplus"]["_M_p"].string(length=int(value["_M_string_length"]), errors="replace")


def uid_text(value):
    return "[" + "-".join(f"{int(value['words_'][index]):08X}" for index in range(4)) + "]"


def version_text(value):
    return ".".join(str(int(value[name])) for name in ("major_", "minor_", "build_", "buildType_"))


def container_text(value):
    """Returns size, format and address of the samples, such as "3 x 4 A8R8G8B8 at 0x5581"."""
    names = [name for name in DIMENSIONS if has_member(value.type.strip_typedefs(), name)] or ["numSamples_"]
    size = " x ".join(str(int(value[name])) for name in names)
    return f"{size} {format_text(value['format_'])} at {int(value['samples_']):#x}"


def parameter_text(value):
    kind, name = int(value["type_"]), narrow_text(value["name_"])
    if kind == 0:
        return name or "(none)"
    member = PARAMETER_MEMBERS[kind] if kind < len(PARAMETER_MEMBERS) else None
    text = value["value_"][member].format_string() if member else f'"{narrow_text(value["string_"])}"'
    return f"{name} = {text}"


def build():
    printers = gdb.printing.RegexpCollectionPrettyPrinter("quillmarsh")
    for name, expression, printer in (
        ("vectors and colours", f"(?:{'|'.join(COMPONENTS)})", Text(components_text)),
        ("matrices", "mat[234]", Matrix),
        ("containers", "(?:Signal|Image|Volume)(?:Base(?:FromExternalStorageAdapter)?|<.*>)", Text(container_text)),
        ("UID", "UID", Text(uid_text)),
        ("versions", r"library_info::LibraryVersion", Text(version_text)),
        ("NamedParameter", "NamedParameter", Text(parameter_text)),
    ):
        printers.add_printer(name, f"^quillmarsh::{expression}$", printer)
    printers.add_printer("wstring", r"^std::(?:__cxx11::)?basic_string<unsigned short, quillmarsh::WideCharTraits.*>$",
                         Text(wide_text, "string"))
    return printers


gdb.printing.register_pretty_printer(gdb.current_objfile(), build(), replace=True)

# Shows kelcl's strings, buffers, exceptions, dates and times in gdb, in a running program as in a core file: it only
# reads memory and calls no function of the program. gdb loads this file by itself together with the library.
#
# Compilers leave the description of a class with virtual functions to the library that defines them, so where that has
# no debug information a host's DBuffer and DException are incomplete types. gdb asks for a printer of references and
# pointers to them all the same; therefore these classes are read by the offsets of the binary interface.
import re

import gdb
import gdb.printing

BUFFERS = ('DBuffer', 'DDBCSBuffer')
EXCEPTIONS = ('DException', 'DAccessError', 'DAssertionFailure', 'DDeviceError', 'DInvalidParameter', 'DInvalidRequest',
              'DResourceExhausted', 'DOutOfMemory', 'DOutOfSystemResource', 'DOutOfWindowResource')
REFERENCES = (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF)


class NotAnObject(Exception):
    """What stands at an address cannot be an object of the class."""


# Memory -----------------------------------------------------------------------------------------------------------


def number_at(address, type_name='unsigned long'):
    return int(gdb.Value(address).cast(gdb.lookup_type(type_name).pointer()).dereference())


def bytes_at(address, count):
    return bytes(gdb.selected_inferior().read_memory(address, count)) if count else b''


def shown_elements():
    return gdb.parameter('print elements') or 0xFFFFFFFF


def c_string_at(address):
    """A NUL-terminated text in quotes, or 0x0. Reads no further than the page where the NUL stands."""
    if address == 0:
        return '0x0'
    data = b''
    try:
        while b'\0' not in data and len(data) <= shown_elements():
            data += bytes_at(address + len(data), 4096 - (address + len(data)) % 4096)
    except gdb.MemoryError:
        return '<no text at %#x>' % address
    data = data.split(b'\0')[0]
    return quoted(data[:shown_elements()], len(data))


def class_at(address, static_name):
    """The class of an object with virtual functions: its virtual table's symbol has the name also without debug
    information."""
    symbol = gdb.execute('info symbol %#x' % number_at(address), to_string=True)
    match = re.match(r'vtable for (.+?)(?:@+\S+)? \+ \d+ in ', symbol)  # a version may follow
    return match.group(1) if match else static_name


# Texts ------------------------------------------------------------------------------------------------------------

ESCAPES = {'"': '\\"', '\\': '\\\\', '\n': '\\n', '\t': '\\t', '\r': '\\r'}


def quoted(data, whole_length):
    """Bytes in gdb's target character set. Those that are no characters, or none that can be shown, in octal."""
    charset = gdb.target_charset()
    try:
        characters = data.decode(charset, 'surrogateescape')
    except LookupError:
        charset = 'ascii'
        characters = data.decode(charset, 'surrogateescape')

    def shown(character):
        if character in ESCAPES:
            return ESCAPES[character]
        try:
            if character.isprintable():
                character.encode(gdb.host_charset())
                return character
        except (LookupError, UnicodeEncodeError):
            pass
        return ''.join('\\%03o' % byte for byte in character.encode(charset, 'surrogateescape'))

    return '"%s"%s' % (''.join(map(shown, characters)), '...' if len(data) < whole_length else '')


def buffer_text(text):
    """The text at an address after the header of its buffer: virtual table, references, length."""
    if text == 0:
        raise NotAnObject
    references = number_at(text - 8, 'unsigned int')
    length = number_at(text - 4, 'unsigned int')
    if references == 0 or length >= 0xFFFFFFE7 or bytes_at(text + length, 1) != b'\0':
        raise NotAnObject
    shown = bytes_at(text, min(length, shown_elements()))
    owners = '%d' % references if references < 0x80000000 else 'pinned'  # which the library stops counting at
    return '%s (length %d, refs %s)' % (quoted(shown, length), length, owners)


# Classes ----------------------------------------------------------------------------------------------------------


class Described:
    """What is shown of an object in one line. What is not readable, or cannot be such an object, is said to be none."""

    def __init__(self, class_name):
        self.class_name = class_name

    def to_string(self):
        try:
            return self.described()
        except gdb.MemoryError as error:
            return '<not a %s: %s>' % (self.class_name, error)
        except NotAnObject:
            return '<not a %s>' % self.class_name


class StringPrinter(Described):
    def __init__(self, value):
        super().__init__('DString')
        self.value = value

    def described(self):
        return buffer_text(int(self.value['text_']))


class DatePrinter(Described):
    """Year-month-day. The day number is the Julian one; the calendar is Gregorian from 14 September 1752 on. The year
    before 1 is -1."""

    def __init__(self, value):
        super().__init__('DDate')
        self.value = value

    def described(self):
        day_number = int(self.value['julianDay_'].cast(gdb.lookup_type('long')))
        # From a March 1 far back, in cycles of four years (1461 days) and of five months (153 days).
        shifted = day_number + 1401
        if day_number > 2361221:
            shifted += (4 * day_number + 274277) // 146097 * 3 // 4 - 38
        quarters = 4 * shifted + 3
        fifths = 5 * (quarters % 1461 // 4) + 2
        month = (fifths // 153 + 2) % 12 + 1
        year = quarters // 1461 - 4716 + (14 - month) // 12
        if year < 1:
            year -= 1
        return '%s%04d-%02d-%02d' % ('-' if year < 0 else '', abs(year), month, fifths % 153 // 5 + 1)


class TimePrinter(Described):
    def __init__(self, value):
        super().__init__('DTime')
        self.value = value

    def described(self):
        seconds = int(self.value['secondsOfDay_'])
        if not 0 <= seconds < 86400:
            raise NotAnObject
        return '%02d:%02d:%02d' % (seconds // 3600, seconds // 60 % 60, seconds % 60)


class Addressed(Described):
    """An object that is read at its address. In front of one that a pointer led to the address is shown."""

    def __init__(self, class_name, address, by_pointer):
        super().__init__(class_name)
        self.address = address
        self.by_pointer = by_pointer

    def to_string(self):
        if not self.by_pointer:
            return super().to_string()
        return '%#x %s' % (self.address, super().to_string()) if self.address else '0x0'


class BufferPrinter(Addressed):
    def described(self):
        text = buffer_text(self.address + 16)
        return '%s %s' % (class_at(self.address, self.class_name), text)


class ExceptionPrinter(Addressed):
    """The class and the numbers; as children the texts, the newest first, and the locations, the first one added
    first."""

    def location_count(self):
        count = number_at(self.address + 144)
        if count > 5:
            raise NotAnObject
        return count

    def described(self):
        self.location_count()
        severity = 'recoverable' if number_at(self.address + 8, 'unsigned int') else 'unrecoverable'
        return '%s (error id %d, %s, group %s)' % (class_at(self.address, self.class_name), number_at(self.address + 16),
                                                   severity, c_string_at(number_at(self.address + 168)))

    def location(self, index):
        address = self.address + 24 + 24 * index
        return 'file %s, function %s, line %d' % (c_string_at(number_at(address)), c_string_at(number_at(address + 8)),
                                                  number_at(address + 16))

    def children(self):
        if self.address == 0:
            return
        try:
            location_count = self.location_count()
            # A text's node begins with the address of the block with its characters, after the block's own header of 32
            # bytes, and the address of the next node.
            node = number_at(self.address + 160)
            for index in range(min(number_at(self.address + 152), shown_elements())):
                yield 'text[%d]' % index, c_string_at(number_at(node) + 32)
                node = number_at(node + 8)
            for index in range(location_count):
                yield 'location[%d]' % index, self.location(index)
        except (gdb.MemoryError, NotAnObject):
            return


# Choice of the printer --------------------------------------------------------------------------------------------

OBJECTS = {'DString': StringPrinter, 'DDate': DatePrinter, 'DTime': TimePrinter}
ADDRESSED = {**dict.fromkeys(BUFFERS, BufferPrinter), **dict.fromkeys(EXCEPTIONS, ExceptionPrinter)}


class Printers(gdb.printing.PrettyPrinter):
    def __init__(self):
        names = [*OBJECTS, *ADDRESSED]
        super().__init__('libkelcl', [gdb.printing.SubPrettyPrinter(name) for name in names])

    def printer_of(self, value):
        kind = value.type.strip_typedefs()
        pointer = kind.code == gdb.TYPE_CODE_PTR
        reference = kind.code in REFERENCES
        name = (kind.target() if pointer or reference else kind).strip_typedefs().unqualified().name
        if name in OBJECTS and not pointer:
            return name, OBJECTS[name](value.referenced_value() if reference else value)
        if name in ADDRESSED and pointer:
            return name, ADDRESSED[name](name, int(value), True)
        if name in ADDRESSED:
            address = (value.referenced_value() if reference else value).address
            return name, ADDRESSED[name](name, int(address), False) if address is not None else None
        return None, None

    def __call__(self, value):
        name, printer = self.printer_of(value)
        enabled = any(known.name == name and known.enabled for known in self.subprinters)
        return printer if enabled else None


gdb.printing.register_pretty_printer(gdb.current_objfile(), Printers(), replace=True)

"""The C library: finding it, passing texts to it, and taking what it returns."""

import json
import os
import sys
import threading
from contextlib import ExitStack, contextmanager
from pathlib import Path
from typing import Any, Iterator, Optional, Union

from platen._errors import PlatenError, error_from
from platen._ffi import ffi as _ffi

ffi: Any = _ffi
NULL: Any = ffi.NULL

AnyPath = Union[str, "os.PathLike[str]"]
#: A file's path, or its bytes.
Source = Union[AnyPath, bytes]

_NAMES = {"win32": "platen_c.dll", "darwin": "libplaten_c.1.dylib"}
_NAME = _NAMES.get(sys.platform, "libplaten_c.so.1")


def _load() -> Any:
    bundled = Path(__file__).with_name(_NAME)
    chosen = os.environ.get("PLATEN_LIBRARY")
    place = chosen or (str(bundled) if bundled.exists() else _NAME)
    try:
        library = ffi.dlopen(place)
        there = library.platen_interface_version()
    except (OSError, AttributeError, ffi.error) as error:
        named = f" (PLATEN_LIBRARY is {chosen})" if place == chosen else ""
        raise ImportError(
            f"platen cannot load its library{named}: {str(error).split(': ', 1)[-1]}\n"
            f"Install libplaten, or set PLATEN_LIBRARY to the path of {_NAME}."
        ) from None
    if there < library.PLATEN_INTERFACE_VERSION:
        raise ImportError(
            f"platen needs version {library.PLATEN_INTERFACE_VERSION} of the C interface,"
            f" and {place} has {there}: install a newer libplaten."
        )
    return library


library: Any = _load()


def text(value: str) -> bytes:
    """A text as the library takes it."""
    if not isinstance(value, str):
        raise TypeError(f"a str is needed, not {type(value).__name__}")
    if "\0" in value:
        raise ValueError("a text for platen has no zero characters")
    # What is no text (a file name in another encoding) is refused by the library, in words.
    return value.encode("utf-8", "surrogateescape")


def text_or_null(value: Optional[str]) -> Any:
    return NULL if value is None else text(value)


def path_text(path: Optional[AnyPath]) -> Any:
    return NULL if path is None else text(os.fspath(path))


class Session:
    """A context of the library. Whoever calls the library with something of it holds its lock."""

    def __init__(self, max_body: Optional[int] = None) -> None:
        self.context: Any = ffi.gc(library.platen_context_create(), library.platen_context_destroy)
        self.lock = threading.RLock()
        if self.context == NULL:
            raise MemoryError
        if max_body is not None:
            library.platen_context_set_max_body(self.context, max_body)

    def failure(self, file: str = "") -> PlatenError:
        """Why the last call failed."""
        said = ffi.string(library.platen_context_error(self.context)).decode("utf-8", "replace")
        return error_from(json.loads(said) if said else {}, file)

    def done(self, result: int) -> None:
        if not result:
            raise self.failure()

    def taken(self, buffer: Any) -> bytes:
        """The bytes of a buffer, which is given back."""
        if buffer == NULL:
            raise self.failure()
        try:
            data = library.platen_buffer_data(buffer)
            return bytes(ffi.buffer(data, library.platen_buffer_size(buffer)))
        finally:
            library.platen_buffer_destroy(buffer)

    def json(self, buffer: Any) -> Any:
        return json.loads(self.taken(buffer))


@contextmanager
def locked(*sessions: Session) -> Iterator[None]:
    """Holds several sessions, always in the same order, so that nobody waits for each other."""
    with ExitStack() as stack:
        for session in sorted(set(sessions), key=id):
            stack.enter_context(session.lock)
        yield

/// The JSON that tests see of the library and its command is kept in the folder that
/// PLATEN_TEST_JSON names, where it is held against its schemas once all tests are done
/// (scripts/schemas.py).
#pragma once

#include <string>

/// Keeps the lines of `text` that are outputs with a schema, under the name of the running test.
/// Returns the text.
const std::string& keepJson(const std::string& text);

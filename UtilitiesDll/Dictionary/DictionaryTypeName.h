#pragma once

/// The name of an entry or of a key, as it stands in the place of a failure. Each type that a dictionary uses
/// has its specialisation, with a C string `value`.
template <typename Type>
struct DictionaryTypeName;

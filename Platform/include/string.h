#include_next <string.h>

#ifndef OV_STRING_H
#define OV_STRING_H
#ifdef __cplusplus
#include <strings.h>
#include <wchar.h>
inline int _stricmp(const char* string1, const char* string2) { return strcasecmp(string1, string2); }
inline int _strnicmp(const char* string1, const char* string2, size_t count) {
    return strncasecmp(string1, string2, count);
}
inline char* _strdup(const char* string) { return strdup(string); }
#endif
#endif

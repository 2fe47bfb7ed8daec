/*
 * The message catalogue, as the module links it. What is built here is a stand-in for hosts and tests: it knows the
 * domain's texts in one language, which it reads from a catalogue file, and gives every other text back as it came.
 */
#ifndef QUILLET_PLATFORM_LIBLINGUA_H
#define QUILLET_PLATFORM_LIBLINGUA_H

#ifdef __cplusplus
extern "C" {
#endif

typedef struct LingDomain LingDomain;

/* Opens a message domain for a language; null is the language of the message ids. Null on failure. */
LingDomain* LINGopenmsgdom(const char* domain, const char* language);
/* The translation of a text, or the text itself. Lives until the domain is closed, or as long as `messageId`. */
const char* LINGgettext(LingDomain* domain, const char* messageId);
/* 0 on success. */
int LINGclosemsgdom(LingDomain* domain);

/* Converts a text of the host to an encoding; -3 is that of file names. Length -1 means up to the NUL. The result
   lives until the next call on the same thread. */
const char* LINGconvstrto(int encoding, const char* text, int length, int reserved);

/*
 * Of the stand-in alone: loads a catalogue, which replaces the one before (null: none). Lines of the form
 * "message id" = "translation", with the escapes \n \t \" \\ inside the quotes; # begins a comment line. A
 * translation has the %-conversions of its message in the same order; the last ones may be missing. To be called
 * before domains are opened. 0 on success, else the number of the first bad line, or -1 for an unreadable file.
 */
int LINGloadcatalogue(const char* path);

#ifdef __cplusplus
}
#endif

#endif

/* Elsewhere a plain char, negative above ASCII, may be asked for its kind; here it would be looked
   up in front of the table. Above ASCII nothing is a letter or a blank in the C locale, on both. */
#include_next <ctype.h>

#ifndef CORVANE_CTYPE_H
#define CORVANE_CTYPE_H
#ifndef __cplusplus

#define isalnum(c) ((isalnum)((unsigned char)(c)))
#define isalpha(c) ((isalpha)((unsigned char)(c)))
#define isdigit(c) ((isdigit)((unsigned char)(c)))
#define islower(c) ((islower)((unsigned char)(c)))
#define isprint(c) ((isprint)((unsigned char)(c)))
#define ispunct(c) ((ispunct)((unsigned char)(c)))
#define isspace(c) ((isspace)((unsigned char)(c)))
#define isupper(c) ((isupper)((unsigned char)(c)))
#define isxdigit(c) ((isxdigit)((unsigned char)(c)))

#endif
#endif

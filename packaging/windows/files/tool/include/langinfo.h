/* The manifest makes UTF-8 the code page. */
#ifndef CORVANE_LANGINFO_H
#define CORVANE_LANGINFO_H

#define CODESET 0
#define nl_langinfo(item) ((void)(item), "UTF-8")

#endif

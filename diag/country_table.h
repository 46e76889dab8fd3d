// The countries that the shell knows by name.

#ifndef DIAG_COUNTRY_TABLE_H
#define DIAG_COUNTRY_TABLE_H

/// For each country its two letters and its name, each terminated by a zero, in the order of the printed list. An empty
/// text ends the array. A table of structures would need 3 KB more, for pointers and for the alignment of the names.
extern const char kCountryTexts[];

#endif

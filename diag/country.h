// The regulatory country of the radios.

#ifndef DIAG_COUNTRY_H
#define DIAG_COUNTRY_H

/// `country [NAME]`: gives both radios the country and full power, and tells the daemon. Without a name it is the
/// default country of the region in the flash record. An unknown name draws the list of countries, more words draw the
/// format. 0, or -1 when the channel has no buffer.
int countryCommand(int argc, char** argv);

#endif

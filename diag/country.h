// The regulatory country of the radios.

#ifndef DIAG_COUNTRY_H
#define DIAG_COUNTRY_H

/// `country [NAME]`: sets the country and full power on both radios and sends the country to the daemon. Without a
/// name, takes the default country of the region in the flash record. An unknown name prints the list of countries,
/// more words print the format. Returns 0, or -1 if the channel has no buffer.
int countryCommand(int argc, char** argv);

#endif

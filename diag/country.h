// The regulatory country of the radios.

#ifndef DIAG_COUNTRY_H
#define DIAG_COUNTRY_H

int countryCommand(int argc, char** argv);

#endif

// `get system` and `get qsky`: what the shell learns without the CAPWAP daemon.

#ifndef DIAG_SYSTEM_INFO_H
#define DIAG_SYSTEM_INFO_H

int versionCommand(int argc, char** argv);
int performanceCommand(int argc, char** argv);
int cloudInfoCommand(int argc, char** argv);

#endif

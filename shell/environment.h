// The environment that the login hands to the session.

#ifndef SHELL_ENVIRONMENT_H
#define SHELL_ENVIRONMENT_H

/// Removes the variables that change how a system shell or a pager starts, and has pagers start no programs. To be
/// called before anything is run.
void secureEnvironment();

/// Removes a size of the screen that is no whole number from 1 to 1000. Has readline read its configuration file only
/// if that and the files that it includes are small plain files. Removes a home folder whose description of the
/// terminal is no plain file. To be called before readline starts.
void checkReadlineEnvironment();

#endif

// The environment that the login hands to the session.

#ifndef SHELL_ENVIRONMENT_H
#define SHELL_ENVIRONMENT_H

/// Removes the variables that change how a system shell or a pager starts. Sets LESSSECURE, so that the pager `less`
/// starts no programs. To be called before the first tool runs.
void secureEnvironment();

/// Removes COLUMNS and LINES unless they are whole numbers from 1 to 1000. Lets readline read its configuration file
/// only if that file and the files that it includes are small regular files. Removes HOME if the folder that it names
/// has a description of the terminal that is not a regular file. To be called before readline starts.
void checkReadlineEnvironment();

#endif

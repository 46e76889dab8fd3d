// The keys of readline that the shell replaces or ignores.

#ifndef SHELL_KEYS_H
#define SHELL_KEYS_H

/// Changes what some keys of readline do. To be called before readline reads the user's configuration file, which may
/// bind these keys again.
void replaceKeys();

/// Whether the key that was typed does nothing: Ctrl-S or Ctrl-Q, unless the user's configuration file binds it. The
/// caller drops such a key. If readline got it during a search, the key would end the search or be searched for.
bool isIgnoredKey(unsigned char key);

#endif

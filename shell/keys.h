// The keys of readline that the shell replaces or ignores.

#ifndef SHELL_KEYS_H
#define SHELL_KEYS_H

/// Replaces keys of readline's. To be called before readline reads the user's configuration file, which may bind them.
void replaceKeys();

/// Whether the key that was typed does nothing: Ctrl-S or Ctrl-Q, unless the user's configuration file binds it. A
/// search would end at a key that is bound to a command, and take any other key for text.
bool isIgnoredKey(unsigned char key);

#endif

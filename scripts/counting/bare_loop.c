/* The least that reads lines with readline, for comparison: says each line and keeps it in the history. */

#include <stdio.h>
#include <stdlib.h>

#include <readline/history.h>
#include <readline/readline.h>

int main(void)
{
    char* line;
    while ((line = readline("vendor-ap  # ")) != NULL) {
        puts(line);
        add_history(line);
        free(line);
    }
    return EXIT_FAILURE;
}

/* plain_work WORK FILE TIMES: the least that does what a line of the shell does, as often as told, for comparison. */

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

enum { LINE_SIZE = 512, MOST_LINES = 8192 };

static char* lines[MOST_LINES];
static int line_count;

static void keep_lines(const char* path)
{
    char line[LINE_SIZE];
    FILE* in = fopen(path, "r");
    if (in == NULL)
        exit(EXIT_FAILURE);
    while (line_count < MOST_LINES && fgets(line, sizeof line, in) != NULL)
        lines[line_count++] = strdup(line);
    fclose(in);
}

/* The text that the shell composes, finished. */
static void copy(const char* path)
{
    int i;
    if (line_count == 0)
        keep_lines(path);
    for (i = 0; i < line_count; ++i)
        fputs(lines[i], stdout);
    fflush(stdout);
}

/* A configuration file, each line cut at its equals sign. */
static void load(const char* path)
{
    char line[LINE_SIZE];
    FILE* in = fopen(path, "r");
    if (in == NULL)
        exit(EXIT_FAILURE);
    while (fgets(line, sizeof line, in) != NULL) {
        char* value = strchr(line, '=');
        if (value != NULL)
            *value = '\0';
    }
    fclose(in);
}

/* A configuration file, replaced as one that a cut of the power leaves whole. */
static void save(const char* path)
{
    char beside[LINE_SIZE];
    FILE* out;
    int i;
    if (line_count == 0)
        keep_lines(path);
    snprintf(beside, sizeof beside, "%s.new", path);
    if ((out = fopen(beside, "w")) == NULL)
        exit(EXIT_FAILURE);
    for (i = 0; i < line_count; ++i)
        fputs(lines[i], out);
    fflush(out);
    fsync(fileno(out));
    fclose(out);
    rename(beside, path);
}

/* The list of stations, formatted by the C library. */
static void stations(const char* count)
{
    int i;
    for (i = 1; i <= atoi(count); ++i) {
        printf("=== %3d ======================================\n", i & 255);
        printf("    AID         : %x\n", i);
        printf("    MAC         : %02x:%02x:%02x:%02x:%02x:%02x\n", 2, 26, 43, 1, i >> 8, i & 255);
        printf("    BSSID       : %02x:%02x:%02x:%02x:%02x:%02x\n", 2, 26, 43, 49, 0, i & 7);
        printf("    VAP         : wlan%d-va%d\n", i & 1, i & 7);
        printf("    SSID        : %.33s\n", "a network of the office");
        printf("    Type        : %s\n", "wl----sta");
        printf("    VlanID      : %d\n", 10 + (i & 7));
    }
    fflush(stdout);
}

static const struct {
    const char* name;
    void (*work)(const char* argument);
} works[] = {{"copy", copy}, {"load", load}, {"save", save}, {"stations", stations}};

int main(int argc, char** argv)
{
    size_t i;
    int times;
    for (i = 0; argc == 4 && i < sizeof works / sizeof works[0]; ++i)
        if (strcmp(argv[1], works[i].name) == 0)
            for (times = atoi(argv[3]); times > 0; --times)
                works[i].work(argv[2]);
    return EXIT_SUCCESS;
}

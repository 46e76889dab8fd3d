/* A plugin of QEMU's user-mode emulation: counts the instructions that a process executes, without those of processes
   it starts, and writes their number into the file FILE of "-plugin instruction_count.so,out=FILE". */

#include <inttypes.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

/* What is needed of the plugin interface, version 1: no package has its header. */
struct qemu_plugin_tb;
enum qemu_plugin_op { QEMU_PLUGIN_INLINE_ADD_U64 };
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
void qemu_plugin_register_vcpu_tb_trans_cb(uint64_t id, void (*translated)(uint64_t id, struct qemu_plugin_tb* block));
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb* block, enum qemu_plugin_op op, void* counter,
                                              uint64_t amount);
void qemu_plugin_register_atexit_cb(uint64_t id, void (*ended)(uint64_t id, void* data), void* data);
int qemu_plugin_install(uint64_t id, const void* info, int argc, char** argv);

__attribute__((visibility("default"))) int qemu_plugin_version = 1;

static uint64_t executed;
static const char* file;
static pid_t counted;

static void count(uint64_t id, struct qemu_plugin_tb* block)
{
    (void)id;
    qemu_plugin_register_vcpu_tb_exec_inline(block, QEMU_PLUGIN_INLINE_ADD_U64, &executed,
                                             qemu_plugin_tb_n_insns(block));
}

static void say(uint64_t id, void* data)
{
    FILE* out;
    (void)id;
    (void)data;
    if (getpid() != counted || (out = fopen(file, "w")) == NULL)
        return;
    fprintf(out, "Collected : %" PRIu64 "\n", executed);
    fclose(out);
}

int qemu_plugin_install(uint64_t id, const void* info, int argc, char** argv)
{
    (void)info;
    if (argc != 1 || strncmp(argv[0], "out=", 4) != 0)
        return -1;
    file = argv[0] + 4;
    counted = getpid();
    qemu_plugin_register_vcpu_tb_trans_cb(id, count);
    qemu_plugin_register_atexit_cb(id, say, NULL);
    return 0;
}

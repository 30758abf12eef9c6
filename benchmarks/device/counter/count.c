/* A plugin of the emulator (its interface for plugins, version 1) that counts the instructions of the guest
 * that lie in a range of addresses, and at the end writes the number to a file.
 *
 *     -plugin libcount.so,begin=0x10000000,end=0x20000000,output=FILE */
#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* What the emulator offers to plugins, and what it expects of them; no package has its header. */
typedef uint64_t qemu_plugin_id_t;
struct qemu_info_t;
struct qemu_plugin_tb;
enum qemu_plugin_op { QEMU_PLUGIN_INLINE_ADD_U64 };
typedef void (*qemu_plugin_vcpu_tb_trans_cb_t)(qemu_plugin_id_t id, struct qemu_plugin_tb* block);
typedef void (*qemu_plugin_udata_cb_t)(qemu_plugin_id_t id, void* data);
void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id, qemu_plugin_vcpu_tb_trans_cb_t call);
void qemu_plugin_register_vcpu_tb_exec_inline(struct qemu_plugin_tb* block, enum qemu_plugin_op operation,
                                              void* number, uint64_t addend);
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id, qemu_plugin_udata_cb_t call, void* data);
size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb* block);
uint64_t qemu_plugin_tb_vaddr(const struct qemu_plugin_tb* block);
extern int qemu_plugin_version;
int qemu_plugin_install(qemu_plugin_id_t id, const struct qemu_info_t* info, int count, char** arguments);

int qemu_plugin_version = 1;

static uint64_t begin;
static uint64_t end;
static const char* output;
static uint64_t executed;

/* A block is translated once, executed as a whole each time, and ends with its first branch. */
static void BlockIsTranslated(qemu_plugin_id_t id, struct qemu_plugin_tb* block) {
    const uint64_t address = qemu_plugin_tb_vaddr(block);
    (void)id;
    if (address < begin || address >= end) return;
    qemu_plugin_register_vcpu_tb_exec_inline(block, QEMU_PLUGIN_INLINE_ADD_U64, &executed,
                                             qemu_plugin_tb_n_insns(block));
}

static void GuestHasEnded(qemu_plugin_id_t id, void* data) {
    FILE* const file = fopen(output, "w");
    (void)id;
    (void)data;
    if (file == NULL) return;
    fprintf(file, "%" PRIu64 "\n", executed);
    fclose(file);
}

/* The value of the argument NAME=VALUE, or null. */
static const char* ValueOf(const char* name, int count, char** arguments) {
    const size_t length = strlen(name);
    for (int i = 0; i < count; ++i) {
        if (strncmp(arguments[i], name, length) == 0 && arguments[i][length] == '=')
            return arguments[i] + length + 1;
    }
    return NULL;
}

int qemu_plugin_install(qemu_plugin_id_t id, const struct qemu_info_t* info, int count, char** arguments) {
    const char* const first = ValueOf("begin", count, arguments);
    const char* const last = ValueOf("end", count, arguments);
    const char* const file = ValueOf("output", count, arguments);
    (void)info;
    if (first == NULL || last == NULL || file == NULL) return 1;
    begin = strtoull(first, NULL, 0);
    end = strtoull(last, NULL, 0);
    output = strdup(file);
    qemu_plugin_register_vcpu_tb_trans_cb(id, BlockIsTranslated);
    qemu_plugin_register_atexit_cb(id, GuestHasEnded, NULL);
    return 0;
}

/* What bench_drawings does, with libxlsxwriter: cc -O2 drawings_peer.c -lxlsxwriter
 *   drawings_peer pictures N DIR OUT | comments N OUT */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <xlsxwriter.h>

static int pictures(int count, const char* folder, const char* out) {
    lxw_workbook* book = workbook_new(out);
    lxw_worksheet* sheet = workbook_add_worksheet(book, "S");
    for (int i = 0; i < count; ++i) {
        char path[4096];
        snprintf(path, sizeof path, "%s/%d.png", folder, i);
        if (worksheet_insert_image(sheet, (lxw_row_t)(3 * i), 0, path)) return 1;
    }
    return workbook_close(book) != LXW_NO_ERROR;
}

static int comments(int count, const char* out) {
    lxw_workbook* book = workbook_new(out);
    lxw_worksheet* sheet = workbook_add_worksheet(book, "S");
    worksheet_set_comments_author(sheet, "Author");
    for (int i = 0; i < count; ++i) {
        char text[64];
        snprintf(text, sizeof text, "Some text of comment %d", i);
        if (worksheet_write_comment(sheet, (lxw_row_t)(i / 10), (lxw_col_t)(i % 10), text)) return 1;
    }
    return workbook_close(book) != LXW_NO_ERROR;
}

int main(int argc, char** argv) {
    if (argc == 5 && strcmp(argv[1], "pictures") == 0) return pictures(atoi(argv[2]), argv[3], argv[4]);
    if (argc == 4 && strcmp(argv[1], "comments") == 0) return comments(atoi(argv[2]), argv[3]);
    fprintf(stderr, "usage: drawings_peer pictures N DIR OUT | comments N OUT\n");
    return 2;
}

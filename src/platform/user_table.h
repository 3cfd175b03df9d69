// What a library of the user's own offers to the built-in `user_fun`. The library is a shared
// library named by the environment variable VELORA_USER_LIBRARY; it exports one function,
// velora_user_table, and is loaded at the first call of `user_fun`. This header is plain C.
#ifndef VELORA_USER_TABLE_H
#define VELORA_USER_TABLE_H

#ifdef __cplusplus
extern "C" {
#endif

#define VELORA_USER_VERSION 1

typedef struct VeloraUserTable {
  /* VELORA_USER_VERSION of the header that the library was built with. */
  int version;
  /* Answers function `number`, applied to `count` texts that end in NUL and belong to the caller.
     The result is a text ending in NUL that user_free takes back, or null when there is no such
     function or the texts do not suit it; the query then keeps the call as it was written. */
  char *(*user_fun)(int number, const char *const *texts, int count);
  /* Frees a text that user_fun answered. */
  void (*user_free)(char *text);
} VeloraUserTable;

/* The function that the library exports; the table lives as long as the library. */
typedef const VeloraUserTable *(*VeloraUserTableFunction)(void);

#if defined(_WIN32)
#define VELORA_USER_EXPORT __declspec(dllexport)
#else
#define VELORA_USER_EXPORT __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
}
#endif

#endif

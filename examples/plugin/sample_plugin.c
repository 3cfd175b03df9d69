/* A library of the user's own for the built-in `user_fun`, in plain C.

   Build and use it:
     cc -shared -fPIC -I src -o sample_plugin.so examples/plugin/sample_plugin.c
     VELORA_USER_LIBRARY=./sample_plugin.so velora
     QUERY> user_fun #1 ["never" "odd" "or" "even"];

   Number 1 writes its texts in capital letters, one after another with a blank between them.
   Number 2 counts how many texts it was given. Every other number is refused. */
#include <ctype.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "platform/user_table.h"

static char *shout(const char *const *texts, int count) {
  size_t room = 1;
  for (int i = 0; i < count; i++)
    room += strlen(texts[i]) + 1;
  char *answer = malloc(room);
  if (answer == NULL)
    return NULL;
  char *to = answer;
  for (int i = 0; i < count; i++) {
    if (i > 0)
      *to++ = ' ';
    for (const char *from = texts[i]; *from != '\0'; from++)
      *to++ = (char)toupper((unsigned char)*from);
  }
  *to = '\0';
  return answer;
}

static char *how_many(int count) {
  char *answer = malloc(24);
  if (answer != NULL)
    snprintf(answer, 24, "%d", count);
  return answer;
}

static char *sample_fun(int number, const char *const *texts, int count) {
  switch (number) {
  case 1:
    return shout(texts, count);
  case 2:
    return how_many(count);
  default:
    return NULL;
  }
}

static void sample_free(char *text) { free(text); }

static const VeloraUserTable sample_table = {VELORA_USER_VERSION, sample_fun, sample_free};

VELORA_USER_EXPORT const VeloraUserTable *velora_user_table(void) { return &sample_table; }

/* What --help says below the options: more about a command, and examples. */
#ifndef KORV_INSPECT_HELP_TEXTS_H
#define KORV_INSPECT_HELP_TEXTS_H

namespace inspect {

extern const char *const HELP_PROGRAM;
extern const char *const HELP_TREE;
extern const char *const HELP_FIND;
extern const char *const HELP_WALK;
extern const char *const HELP_DUMP;
extern const char *const HELP_ENUMS;
extern const char *const HELP_MODULES;
extern const char *const HELP_CHECK;
extern const char *const HELP_DIFF;

} // namespace inspect

#endif // KORV_INSPECT_HELP_TEXTS_H

#!/bin/sh
# Only src/ext names the host: memory, files, environment, clock and locale of the C library.
set -u
cd "$1/src" || exit 2
calls='malloc|calloc|realloc|free|fopen|fclose|fread|fgetc|getc|ungetc|fgets|fwrite|fseek|ftell'
calls="$calls|getenv|putenv|setenv|time|localtime|gmtime|clock|setlocale|localeconv|printf|fprintf"
calls="$calls|strtol|strtod|atoi|atof|toupper|tolower|isalpha|isspace|isdigit|isalnum|ispunct|exit"
calls="$calls|abort|perror|system"
# Names with a prefix of our own (vel_free) and comments do not count.
found=$(grep -rnE "(^|[^A-Za-z0-9_.>:]|std::)($calls)[ ]*\(" --include='*.h' --include='*.cpp' . |
    grep -v '^\./ext/' | grep -vE ':[0-9]+: *(//|\*|/\*)')
new=$(grep -rnE '(^|[^A-Za-z0-9_])(new [A-Za-z_:]+|delete |throw |try *\{|dynamic_cast|typeid)' \
    --include='*.h' --include='*.cpp' . | grep -vE ':[0-9]+: *(//|\*)' | grep -vE '// .*(new|delete|throw|try)')
grep -q malloc ext/host_defaults.cpp || { echo "the check lost its ground: no malloc in ext"; exit 1; }
[ -z "$found$new" ] && exit 0
printf 'host calls outside src/ext:\n%s\nlanguage features the core does without:\n%s\n' "$found" "$new"
exit 1

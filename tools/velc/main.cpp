#include "velc/commands.h"

int main(int argc, char **argv) {
    return velc::run(argc, argv);
}

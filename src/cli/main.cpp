// `formwerk`: shows one of the library's dialogs and prints the answer.
#include "cli/Cli.h"

int main(int argc, char** argv)
{
    return fw::cli::Main(argc, argv);
}

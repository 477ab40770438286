# The lint: in this preset each source of src/ is read by clang-tidy as it is compiled, by itself and with the compiler's
# own list of the headers it brings along. So only what a change touches is read again, and a build of everything
# reads all.
find_program(CLANG_TIDY clang-tidy REQUIRED)
set(VELDRIN_TIDY ${CLANG_TIDY} --quiet)
# What moc writes lies below the build directory and is nobody's to mend.
file(WRITE ${PROJECT_BINARY_DIR}/.clang-tidy "Checks: '-*,llvm-twine-local'\n")

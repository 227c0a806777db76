# 32-bit x86 Linux with the host compiler's multilib (g++-12-multilib), run
# under qemu-i386 (the host kernel may not run 32-bit programs itself).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)
# The kernel headers (asm/) of the multilib setup live under the 64-bit triplet
# (Debian links them only with gcc-multilib, which conflicts with other cross
# compilers); x86 keeps one set for both widths.
set(CMAKE_C_FLAGS_INIT "-m32 -idirafter /usr/include/x86_64-linux-gnu")
set(CMAKE_CXX_FLAGS_INIT "-m32 -idirafter /usr/include/x86_64-linux-gnu")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-m32")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-m32")
set(CMAKE_LIBRARY_ARCHITECTURE i386-linux-gnu)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-i386)

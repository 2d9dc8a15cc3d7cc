// std::uint32_t call_with_stack_offset(const void *function, const std::uint32_t *arguments, std::uint32_t count,
//                                      std::uint32_t offset)
//
// Calls a function of either convention with the stack pointer `offset` bytes below a 16-byte boundary at the call
// instruction, the arguments on top.
#ifdef _WIN32
#define NAME _call_with_stack_offset
#else
#define NAME call_with_stack_offset
#endif

        .text
        .globl NAME
NAME:
        push %ebp
        mov %esp, %ebp
        push %ebx
        push %esi
        mov 12(%ebp), %esi
        mov 16(%ebp), %ecx
        and $-16, %esp
        lea 0(,%ecx,4), %eax
        neg %eax
        and $15, %eax
        sub %eax, %esp
        sub 20(%ebp), %esp
next:   test %ecx, %ecx
        jz ready
        push -4(%esi,%ecx,4)
        dec %ecx
        jmp next
ready:  call *8(%ebp)
        lea -8(%ebp), %esp
        pop %esi
        pop %ebx
        pop %ebp
        ret
#ifndef _WIN32
        .section .note.GNU-stack,"",@progbits
#endif

# Rows of limbs and blocks of eight limbs in the instructions MULX, ADCX and ADOX (BMI2 and ADX), for x86-64 and its System V
# calling convention. kernels_adx.cpp says what each function does.
#
# Compilers keep one carry chain at best; these instructions have two, in the flags CF and OF, which multiplication leaves
# alone. So a row of products is added to its accumulator with the low halves on one chain and the high halves, which belong
# one limb above, on the other. Between the rows the flags are cleared; loops count with LEA and JRCXZ, which keep them. No
# branch and no address depends on a limb.

.macro begin name
    .globl \name
    .hidden \name
    .type \name, @function
    .p2align 5
\name:
.endm

.macro end name
    .size \name, . - \name
.endm

.macro save
    push %rbx
    push %rbp
    push %r12
    push %r13
    push %r14
    push %r15
.endm

.macro restore
    pop %r15
    pop %r14
    pop %r13
    pop %r12
    pop %rbp
    pop %rbx
.endm

.macro load_block from
    mov (\from), %r8
    mov 8(\from), %r9
    mov 16(\from), %r10
    mov 24(\from), %r11
    mov 32(\from), %r12
    mov 40(\from), %r13
    mov 48(\from), %r14
    mov 56(\from), %r15
.endm

.macro store_block to
    mov %r8, (\to)
    mov %r9, 8(\to)
    mov %r10, 16(\to)
    mov %r11, 24(\to)
    mov %r12, 32(\to)
    mov %r13, 40(\to)
    mov %r14, 48(\to)
    mov %r15, 56(\to)
.endm

# One product of a row with the multiplier in rdx.
.macro step offset, lower, upper
    mulx \offset(%rsi), %rax, %rbx
    adox %rax, %\lower
    adcx %rbx, %\upper
.endm

# What follows the first product of a row of eight, whose high half is in rbx. r0 is free and becomes the limb on top.
.macro rest_of_row r0, r1, r2, r3, r4, r5, r6, r7
    mov $0, %\r0
    adcx %rbx, %\r1
    step 8, \r1, \r2
    step 16, \r2, \r3
    step 24, \r3, \r4
    step 32, \r4, \r5
    step 40, \r5, \r6
    step 48, \r6, \r7
    step 56, \r7, \r0
    mov $0, %eax
    adox %rax, %\r0
.endm

# The block at rsi times the limb at rcx + offset and the limb at rdi + offset are added; the bottom limb goes to the latter.
.macro multiply_add_row offset, r0, r1, r2, r3, r4, r5, r6, r7
    mov \offset(%rcx), %rdx
    xor %eax, %eax
    mulx (%rsi), %rax, %rbx
    adcx \offset(%rdi), %\r0
    adox %rax, %\r0
    mov %\r0, \offset(%rdi)
    rest_of_row \r0, \r1, \r2, \r3, \r4, \r5, \r6, \r7
.endm

# The block at rsi times the factor that makes the bottom limb 0; rcx is -1 / m, the factor goes to rdi + offset.
.macro reduce_row offset, r0, r1, r2, r3, r4, r5, r6, r7
    mov %rcx, %rdx
    imul %\r0, %rdx
    mov %rdx, \offset(%rdi)
    xor %eax, %eax
    mulx (%rsi), %rax, %rbx
    adox %rax, %\r0
    rest_of_row \r0, \r1, \r2, \r3, \r4, \r5, \r6, \r7
.endm

.macro eight_rows row
    \row 0, r8, r9, r10, r11, r12, r13, r14, r15
    \row 8, r9, r10, r11, r12, r13, r14, r15, r8
    \row 16, r10, r11, r12, r13, r14, r15, r8, r9
    \row 24, r11, r12, r13, r14, r15, r8, r9, r10
    \row 32, r12, r13, r14, r15, r8, r9, r10, r11
    \row 40, r13, r14, r15, r8, r9, r10, r11, r12
    \row 48, r14, r15, r8, r9, r10, r11, r12, r13
    \row 56, r15, r8, r9, r10, r11, r12, r13, r14
.endm

# rdi t, rsi carry, rdx a, rcx blocks, r8 b
begin morvane_adx_multiply_add_blocks
    save
    push %rsi
    mov %rcx, %rbp
    mov %r8, %rcx
    mov %rsi, %rax
    mov %rdx, %rsi
    load_block %rax
1:
    eight_rows multiply_add_row
    add $64, %rsi
    add $64, %rdi
    dec %rbp
    jnz 1b
    pop %rax
    store_block %rax
    restore
    ret
end morvane_adx_multiply_add_blocks

# rdi t, rsi m, rdx blocks, rcx -1 / m, r8 factors
begin morvane_adx_reduce_blocks
    save
    push %rdi
    push %rdi
    mov %rdx, %rbp
    mov %r8, %rax
    load_block %rdi
    mov %rax, %rdi
    eight_rows reduce_row
    mov %rdi, %rcx
    pop %rdi
1:
    dec %rbp
    jz 2f
    add $64, %rsi
    add $64, %rdi
    eight_rows multiply_add_row
    jmp 1b
2:
    pop %rax
    store_block %rax
    restore
    ret
end morvane_adx_reduce_blocks

# A row of the triangle: it begins with an empty limb on top and ends by storing the two limbs that are complete.
.macro open_row offset, top
    mov \offset(%rsi), %rdx
    mov $0, %\top
    xor %eax, %eax
.endm

.macro close_row position, lower, upper, top
    mov $0, %eax
    adox %rax, %\top
    mov %\lower, \position(%rdi)
    mov %\upper, \position + 8(%rdi)
.endm

# rdi t, rsi a
begin morvane_adx_cross_products
    save
    mov (%rsi), %rdx
    mulx 8(%rsi), %r8, %r9
    mulx 16(%rsi), %rax, %r10
    add %rax, %r9
    mulx 24(%rsi), %rax, %r11
    adc %rax, %r10
    mulx 32(%rsi), %rax, %r12
    adc %rax, %r11
    mulx 40(%rsi), %rax, %r13
    adc %rax, %r12
    mulx 48(%rsi), %rax, %r14
    adc %rax, %r13
    mulx 56(%rsi), %rax, %r15
    adc %rax, %r14
    adc $0, %r15
    movq $0, (%rdi)
    mov %r8, 8(%rdi)
    mov %r9, 16(%rdi)

    open_row 8, r8
    step 16, r10, r11
    step 24, r11, r12
    step 32, r12, r13
    step 40, r13, r14
    step 48, r14, r15
    step 56, r15, r8
    close_row 24, r10, r11, r8

    open_row 16, r9
    step 24, r12, r13
    step 32, r13, r14
    step 40, r14, r15
    step 48, r15, r8
    step 56, r8, r9
    close_row 40, r12, r13, r9

    open_row 24, r10
    step 32, r14, r15
    step 40, r15, r8
    step 48, r8, r9
    step 56, r9, r10
    close_row 56, r14, r15, r10

    open_row 32, r11
    step 40, r8, r9
    step 48, r9, r10
    step 56, r10, r11
    close_row 72, r8, r9, r11

    open_row 40, r12
    step 48, r10, r11
    step 56, r11, r12
    close_row 88, r10, r11, r12

    mov 48(%rsi), %rdx
    mulx 56(%rsi), %rax, %r13
    add %rax, %r12
    adc $0, %r13
    mov %r12, 104(%rdi)
    mov %r13, 112(%rdi)
    movq $0, 120(%rdi)
    restore
    ret
end morvane_adx_cross_products

.macro double_and_square offset, position
    mov \offset(%rsi), %rdx
    mulx %rdx, %rax, %r9
    mov \position(%rdi), %r10
    mov \position + 8(%rdi), %r11
    adcx %r10, %r10
    adox %rax, %r10
    adcx %r11, %r11
    adox %r9, %r11
    mov %r10, \position(%rdi)
    mov %r11, \position + 8(%rdi)
.endm

# rdi t, rsi a, rdx blocks
begin morvane_adx_double_and_add_squares
    mov %rdx, %rcx
    xor %eax, %eax
1:
    double_and_square 0, 0
    double_and_square 8, 16
    double_and_square 16, 32
    double_and_square 24, 48
    double_and_square 32, 64
    double_and_square 40, 80
    double_and_square 48, 96
    double_and_square 56, 112
    lea 64(%rsi), %rsi
    lea 128(%rdi), %rdi
    lea -1(%rcx), %rcx
    jrcxz 2f
    jmp 1b
2:
    ret
end morvane_adx_double_and_add_squares

# One limb of a row at rdi: the product's low half joins the high half of the one before. With a complement on both sides the
# sum is a difference.
.macro row_step offset, before, high, complement
    mulx \offset(%rsi), %rax, %\high
    mov \offset(%rdi), %r10
    .if \complement
    not %r10
    .endif
    adcx %\before, %rax
    adox %rax, %r10
    .if \complement
    not %r10
    .endif
    mov %r10, \offset(%rdi)
.endm

# rdi r, rsi a, rdx n, rcx w
.macro row complement
    mov %rcx, %r11
    mov %rdx, %rcx
    mov %r11, %rdx
    mov %ecx, %r11d
    and $3, %r11d
    shr $2, %rcx
    xor %r8d, %r8d
    test %rcx, %rcx
    jz 2f
1:
    row_step 0, r8, r9, \complement
    row_step 8, r9, r8, \complement
    row_step 16, r8, r9, \complement
    row_step 24, r9, r8, \complement
    lea 32(%rsi), %rsi
    lea 32(%rdi), %rdi
    lea -1(%rcx), %rcx
    jrcxz 2f
    jmp 1b
2:
    mov $0, %eax
    adcx %rax, %r8
    adox %rax, %r8
    mov %r11d, %ecx
3:
    jrcxz 4f
    xor %eax, %eax
    row_step 0, r8, r9, \complement
    mov $0, %eax
    adcx %rax, %r9
    adox %rax, %r9
    mov %r9, %r8
    lea 8(%rsi), %rsi
    lea 8(%rdi), %rdi
    lea -1(%rcx), %rcx
    jmp 3b
4:
    mov %r8, %rax
    ret
.endm

begin morvane_adx_multiply_add_row
    row 0
end morvane_adx_multiply_add_row

begin morvane_adx_multiply_subtract_row
    row 1
end morvane_adx_multiply_subtract_row

# rdi r, rsi a, rdx b, rcx blocks, r8 carry in
.macro blocks_with_carry operation
    neg %r8
1:
    mov (%rsi), %rax
    mov 8(%rsi), %r8
    mov 16(%rsi), %r9
    mov 24(%rsi), %r10
    \operation (%rdx), %rax
    \operation 8(%rdx), %r8
    \operation 16(%rdx), %r9
    \operation 24(%rdx), %r10
    mov %rax, (%rdi)
    mov %r8, 8(%rdi)
    mov %r9, 16(%rdi)
    mov %r10, 24(%rdi)
    mov 32(%rsi), %rax
    mov 40(%rsi), %r8
    mov 48(%rsi), %r9
    mov 56(%rsi), %r10
    \operation 32(%rdx), %rax
    \operation 40(%rdx), %r8
    \operation 48(%rdx), %r9
    \operation 56(%rdx), %r10
    mov %rax, 32(%rdi)
    mov %r8, 40(%rdi)
    mov %r9, 48(%rdi)
    mov %r10, 56(%rdi)
    lea 64(%rsi), %rsi
    lea 64(%rdx), %rdx
    lea 64(%rdi), %rdi
    dec %rcx
    jnz 1b
    setc %al
    movzbl %al, %eax
    ret
.endm

begin morvane_adx_add_blocks
    blocks_with_carry adc
end morvane_adx_add_blocks

begin morvane_adx_subtract_blocks
    blocks_with_carry sbb
end morvane_adx_subtract_blocks

    .section .note.GNU-stack, "", @progbits

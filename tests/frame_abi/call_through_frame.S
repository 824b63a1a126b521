# int32_t call_through_frame(FrameCall *call): calls call->function as a host would, with known values in every
# register that a callee must preserve, and notes what came back. cdecl; one call at a time.
#
# FrameCall, by offset:
    .set function, 0
    .set slots, 4
    .set slot_count, 8
    .set stack_offset, 12     # bytes by which the stack lies off a multiple of 16 at the call
    .set ecx_in, 16
    .set mxcsr_in, 20
    .set control_word_in, 24
    .set removed, 28          # bytes of arguments that the function removed
    .set ebx_out, 32
    .set esi_out, 36
    .set edi_out, 40
    .set ebp_out, 44
    .set eflags_out, 48
    .set mxcsr_out, 52
    .set x87_out, 56          # 28 bytes of x87 environment

    .text
    .globl _call_through_frame
_call_through_frame:
    pushl %ebp
    pushl %ebx
    pushl %esi
    pushl %edi
    movl 20(%esp), %ebx
    movl %ebx, current_call
    movl %esp, host_stack

    # Room for the arguments, so that the stack lies as wanted once they are pushed.
    movl slot_count(%ebx), %ecx
    andl $-16, %esp
    leal 0(,%ecx,4), %eax
    addl $15, %eax
    andl $-16, %eax
    subl $32, %esp
    leal 0(,%ecx,4), %edx
    subl %edx, %eax
    subl %eax, %esp
    addl stack_offset(%ebx), %esp

    movl slots(%ebx), %esi
push_next:
    testl %ecx, %ecx
    jz pushed
    decl %ecx
    pushl (%esi,%ecx,4)
    jmp push_next
pushed:
    movl %esp, stack_at_call

    fninit
    fldcw control_word_in(%ebx)
    ldmxcsr mxcsr_in(%ebx)
    cld
    movl ecx_in(%ebx), %ecx
    movl function(%ebx), %eax
    movl $0x5A5A0001, %ebx
    movl $0x5A5A0002, %esi
    movl $0x5A5A0003, %edi
    movl $0x5A5A0004, %ebp
    call *%eax

    movl current_call, %ecx
    movl %ebx, ebx_out(%ecx)
    movl %esi, esi_out(%ecx)
    movl %edi, edi_out(%ecx)
    movl %ebp, ebp_out(%ecx)
    movl %esp, %edx
    subl stack_at_call, %edx
    movl %edx, removed(%ecx)
    movl host_stack, %esp
    pushfl
    popl eflags_out(%ecx)
    cld
    stmxcsr mxcsr_out(%ecx)
    fnstenv x87_out(%ecx)

    fninit
    pushl $0x1F80
    ldmxcsr (%esp)
    addl $4, %esp
    popl %edi
    popl %esi
    popl %ebx
    popl %ebp
    ret

    .bss
    .lcomm current_call, 4
    .lcomm host_stack, 4
    .lcomm stack_at_call, 4

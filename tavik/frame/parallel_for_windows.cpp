#include "tavik/frame/parallel_for.h"

#include <windows.h>

#include "tavik/frame/shared_loop.h"

// The module's own header, placed by the linker: its address is the module's handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace tavik {
namespace {

int64_t processor_count() {
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    return static_cast<int64_t>(info.dwNumberOfProcessors);
}

void CALLBACK work_on_loop(PTP_CALLBACK_INSTANCE /*instance*/, void *loop, PTP_WORK /*work*/) {
    static_cast<SharedLoop *>(loop)->take_part();
}

} // namespace

void run_chunks(int32_t first, int32_t last, int32_t grain, RangeBody body) {
    SharedLoop loop(first, last, grain, processor_count(), body);

    TP_CALLBACK_ENVIRON environment;
    InitializeThreadpoolEnvironment(&environment);
    // Keeps the module loaded until the last callback has left it.
    SetThreadpoolCallbackLibrary(&environment, &__ImageBase);
    PTP_WORK work = CreateThreadpoolWork(work_on_loop, &loop, &environment);
    if (work != nullptr) {
        for (int64_t worker = 0; worker < loop.worker_count(); ++worker) SubmitThreadpoolWork(work);
    }
    loop.take_part();
    if (work != nullptr) {
        // Callbacks that have not begun find nothing left to do: a pool busy with the host's own work is not
        // waited for.
        WaitForThreadpoolWorkCallbacks(work, TRUE);
        CloseThreadpoolWork(work);
    }
    DestroyThreadpoolEnvironment(&environment);
}

} // namespace tavik

#include "tavik/frame/parallel_for.h"

#include <atomic>

#include <windows.h>

// The module's own header, placed by the linker: its address is the module's handle.
extern "C" IMAGE_DOS_HEADER __ImageBase; // NOLINT(bugprone-reserved-identifier)

namespace tavik {
namespace {

int64_t processor_count() {
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    return static_cast<int64_t>(info.dwNumberOfProcessors);
}

// One loop, on the calling thread's stack; the workers take chunks from `next` until none are left. Positions
// are 64-bit, so that the takers that find the end cannot run past the largest index.
struct Loop {
    std::atomic<int64_t> next;
    int64_t last;
    int64_t chunk;
    RangeBody body;

    void take_part() {
        for (;;) {
            const int64_t begin = next.fetch_add(chunk, std::memory_order_relaxed);
            if (begin >= last) return;
            body.call(body.body, static_cast<int32_t>(begin), static_cast<int32_t>(std::min(begin + chunk, last)));
        }
    }
};

void CALLBACK work_on_loop(PTP_CALLBACK_INSTANCE /*instance*/, void *loop, PTP_WORK /*work*/) {
    static_cast<Loop *>(loop)->take_part();
}

} // namespace

void run_chunks(int32_t first, int32_t last, int32_t grain, RangeBody body) {
    const int64_t count = int64_t{last} - first;
    const int64_t processors = processor_count();
    // A few chunks per processor, so that one that finishes early finds more to do.
    constexpr int64_t chunks_per_processor = 4;
    const int64_t chunk = std::max<int64_t>(grain, count / (processors * chunks_per_processor) + 1);
    Loop loop{{first}, last, chunk, body};

    TP_CALLBACK_ENVIRON environment;
    InitializeThreadpoolEnvironment(&environment);
    // Keeps the module loaded until the last callback has left it.
    SetThreadpoolCallbackLibrary(&environment, &__ImageBase);
    PTP_WORK work = CreateThreadpoolWork(work_on_loop, &loop, &environment);
    if (work != nullptr) {
        const int64_t workers = std::min(processors, (count + chunk - 1) / chunk) - 1;
        for (int64_t worker = 0; worker < workers; ++worker) SubmitThreadpoolWork(work);
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

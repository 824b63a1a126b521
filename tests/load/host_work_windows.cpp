#include "tests/load/host_work.h"

#include <windows.h>

namespace tavik_test {

struct HostWork::Pool {
    std::atomic<bool> stopped = false;
    PTP_WORK work = CreateThreadpoolWork(run, this, nullptr);

    static void CALLBACK run(PTP_CALLBACK_INSTANCE /*instance*/, void *pool, PTP_WORK work) {
        compute();
        if (!static_cast<Pool *>(pool)->stopped) SubmitThreadpoolWork(work);
    }
};

HostWork::HostWork() : pool(std::make_unique<Pool>()) {
    for (unsigned i = 0; i < std::thread::hardware_concurrency(); ++i) SubmitThreadpoolWork(pool->work);
}

HostWork::~HostWork() {
    pool->stopped = true;
    WaitForThreadpoolWorkCallbacks(pool->work, FALSE);
    CloseThreadpoolWork(pool->work);
}

} // namespace tavik_test

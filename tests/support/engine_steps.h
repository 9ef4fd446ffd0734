// What a test looks at while the database engine works.
#pragma once

#include <functional>
#include <sqlite3.h>
#include <utility>

namespace vantrel {

/// Calls `look` every thousand steps of the engine, in all databases that are opened as long as the object lives. One
/// at a time.
class EngineSteps {
public:
    explicit EngineSteps(std::function<void()> look) {
        look_ = std::move(look);
        sqlite3_auto_extension(reinterpret_cast<void (*)()>(Watch));
    }
    ~EngineSteps() {
        sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(Watch));
        look_ = {};
    }
    EngineSteps(const EngineSteps&) = delete;
    EngineSteps& operator=(const EngineSteps&) = delete;

private:
    static int Watch(sqlite3* database, char**, const void*) {
        constexpr int kSteps = 1000;
        sqlite3_progress_handler(database, kSteps, Step, nullptr);
        return SQLITE_OK;
    }
    static int Step(void*) {
        if (look_) look_();
        return 0;
    }

    static inline std::function<void()> look_;
};

}  // namespace vantrel

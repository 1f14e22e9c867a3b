#pragma once

#include "fuzz/CheckedApplet.h"
#include "fuzz/LiveApplet.h"

#include <array>
#include <memory>
#include <string_view>

namespace kavo::fuzz {

/// Makes calls on several handles as the lines of a script tell. Each call checks what is promised about it.
///
/// Handle 0 is an applet that is there from the start, 1 and 2 are others on boards of their own, 3 is a slave
/// beside 0; 4 is a null handle, 5 one without an applet. The lines, numbers unless told otherwise:
///
///     set HANDLE PARAMETER DMA VALUE [TYPE [INDEX]]
///                             VALUE: a number; "<" or ">" and a number that is added to the lower or upper
///                             limit; "null"; of a text the number of a file. INDEX: of a table's entry
///     get HANDLE PARAMETER DMA TYPE [INDEX]    INDEX may be "null"
///     describe HANDLE NAME DMA
///     name HANDLE INDEX       id HANDLE NAME           xml HANDLE PORT BYTES
///     event HANDLE BITS       mask HANDLE NAME         tree HANDLE PORT
///     save HANDLE FILE        load HANDLE FILE
///     make HANDLE FAMILIES    free HANDLE
///     acquire HANDLE DMA PICTURES    stop HANDLE DMA   picture HANDLE DMA NUMBER
///     status HANDLE SELECTOR DMA     shade HANDLE OPERATION
///     tick HANDLE TICKS       input HANDLE INPUT LEVEL
///     fail KIND NTH CODE      the nth host call of a kind fails during the next call
class CallScript {
  public:
    CallScript();
    CallScript(const CallScript&) = delete;
    CallScript& operator=(const CallScript&) = delete;

    void begin();
    void run(std::string_view line);
    /// Frees what the lines have made and brings the first applet back to its start state, so that a script
    /// leaves nothing behind.
    void end();

  private:
    static constexpr unsigned handleCount = 6;
    static constexpr unsigned slaveHandle = 3;

    struct Operation {
        std::string_view name;
        void (CallScript::*run)(CallLine& line);
    };
    static const std::array<Operation, 21> operations;

    struct Handle {
        Fg_Struct* runtime = nullptr;
        std::unique_ptr<CheckedApplet> applet;
    };

    /// The handle that a line names.
    Handle& takeHandle(CallLine& line);
    simulator::Board& board() const;

    void set(CallLine& line);
    void get(CallLine& line);
    void describe(CallLine& line);
    void name(CallLine& line);
    void id(CallLine& line);
    void xml(CallLine& line);
    void event(CallLine& line);
    void mask(CallLine& line);
    void tree(CallLine& line);
    void save(CallLine& line);
    void load(CallLine& line);
    void make(CallLine& line);
    void free(CallLine& line);
    void acquire(CallLine& line);
    void stop(CallLine& line);
    void picture(CallLine& line);
    void status(CallLine& line);
    void shade(CallLine& line);
    void tick(CallLine& line);
    void input(CallLine& line);
    void fail(CallLine& line);

    GivenValue takeValue(CallLine& line, int id, unsigned dmaIndex);
    std::string takeTableFile(unsigned number, int id);
    void makeApplet(unsigned number);
    int release(Handle& handle);
    void tellTheOther();

    LiveApplet mFirst{0};
    std::array<Fg_Struct, handleCount - 2> mOwned{}; ///< of the handles 1, 2, 3 and 5
    std::array<Handle, handleCount> mHandles;
    SavedValues mSaved;
    unsigned mNumber = 0;     ///< the handle of the present line
    bool mMaybeFault = false; ///< a host call may fail during the present line
    int mTablesWritten = 0;
    int mCreations = 0;
    std::size_t mOpenFiles = 0;
};

} // namespace kavo::fuzz

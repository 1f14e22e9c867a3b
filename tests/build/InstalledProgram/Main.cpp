#include "platform/ParameterIds.h"
#include "platform/ParameterValues.h"
#include "platform/RuntimeForPrograms.h"
#include "simulator/Board.h"

#include <cstdio>

int main(int count, char** words) {
    int error = 0;
    Fg_Struct* handle = Fg_OpenBoard(count > 1 ? words[1] : APPLET, 0, 0, &error);
    if (handle == nullptr) {
        std::printf("no board: %d\n", error);
        return 1;
    }
    const unsigned width = 640;
    const int set = Fg_setParameterWithType(handle, FG_WIDTH, &width, 1, kavo::type::unsigned32);
    const auto onBoard = simulator::Board::at(0).designValue("Device1_Process1_Buffer_0_DRAM_A_0_XLength");
    const int freed = Fg_FreeGrabber(handle);
    std::printf("set %d, on the board %u, freed %d\n", set, static_cast<unsigned>(onBoard), freed);
    return set == 0 && onBoard == width && freed == 0 ? 0 : 1;
}

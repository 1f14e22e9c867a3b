#include "console/DemoSteps.h"

namespace orbctl {

const char* const demoScene = "# cameras that expose when the trigger system tells them to\n"
                              "camera 0 rate 0\n"
                              "camera 1 rate 0\n";

const std::vector<PictureStep>& pictureSteps() {
    static const std::vector<PictureStep> steps = {
        {"Camera input, 25 frames per second and whole pictures of both ports",
         {"FG_GBE_CAMTYPE=MONO8", "FG_MTU_SIZE=7204", "FG_SWAP_CHANNELS=FG_YES", "FG_CAMERA_WIDTH=1024",
          "FG_XOFFSET=0", "FG_YOFFSET=0", "FG_WIDTH=1024", "FG_HEIGHT=1024", "FG_FORMAT=FG_GRAY",
          "FG_TRIGGER_FRAMESPERSECOND=25", "FG_TRIGGERSTATE=TS_ACTIVE"},
         3,
         "1-whole",
         "the whole sensor of each camera, 8 bits a pixel"},
        {"Region of interest",
         {"0:FG_WIDTH=640", "0:FG_HEIGHT=480", "0:FG_XOFFSET=192", "0:FG_YOFFSET=272", "1:FG_WIDTH=512",
          "1:FG_HEIGHT=512", "1:FG_XOFFSET=512", "1:FG_YOFFSET=0"},
         3,
         "2-region",
         "port 0 from column 192 and row 272, port 1 its upper right corner"},
        {"16-bit output, left aligned",
         {"FG_FORMAT=FG_GRAY16", "FG_BITALIGNMENT=FG_LEFT_ALIGNED"},
         1,
         "3-left-aligned",
         "the same brightness as with 8 bits: the 12 bits stand at the top of the word"},
        {"16-bit output, right aligned",
         {"FG_BITALIGNMENT=FG_RIGHT_ALIGNED"},
         1,
         "4-right-aligned",
         "darkness at first sight: the same 12 bits stand at the bottom of the word"},
        {"Crossed cables",
         {"FG_FORMAT=FG_GRAY", "FG_BITALIGNMENT=FG_LEFT_ALIGNED", "FG_XOFFSET=0", "FG_YOFFSET=0",
          "FG_WIDTH=1024", "FG_HEIGHT=1024", "FG_SWAP_CHANNELS=FG_NO"},
         1,
         "5-crossed",
         "bands in the wrong order: the two cables of each camera are crossed and nothing puts them right"},
        {"Crossed cables, channels swapped",
         {"FG_SWAP_CHANNELS=FG_YES"},
         1,
         "6-swapped",
         "the cameras' pictures straight again, over the same crossed cables"},
    };
    return steps;
}

const std::vector<DiagramStep>& diagramSteps() {
    static const std::vector<DiagramStep> steps = {
        {"Trigger mode Generator, ended by Sync Stop",
         {"FG_TRIGGERSTATE=TS_SYNC_STOP", "FG_TRIGGER_FRAMESPERSECOND=50",
          "FG_TRIGGER_PULSEFORMGEN0_WIDTH=5000", "FG_TRIGGEROUT_SELECT0=PULSEGEN0"},
         {0},
         "120ms",
         {"10ms:FG_TRIGGERSTATE=TS_ACTIVE", "72ms:FG_TRIGGERSTATE=TS_SYNC_STOP"},
         {},
         "7-generator.svg",
         "one exposure every 20 ms while active; the stop lets the last pulse complete"},
        {"Trigger mode Software with a queue",
         {"FG_AREATRIGGERMODE=ATM_SOFTWARE", "FG_TRIGGERQUEUE_MODE=FG_ON", "FG_TRIGGER_FRAMESPERSECOND=100",
          "FG_TRIGGERSTATE=TS_ACTIVE"},
         {0},
         "120ms",
         {"20ms:FG_SENDSOFTWARETRIGGER=7"},
         {},
         "8-software.svg",
         "seven pulses sent at once: they wait in the queue and leave it every 10 ms"},
        {"Trigger mode External with a downscale of 2",
         {"FG_TRIGGERSTATE=TS_SYNC_STOP", "FG_AREATRIGGERMODE=ATM_EXTERNAL", "FG_TRIGGERIN_SRC=TRGINSRC_0",
          "FG_TRIGGERIN_DOWNSCALE=2", "FG_TRIGGERSTATE=TS_ACTIVE"},
         {0},
         "120ms",
         {},
         {"0:12ms:8"},
         "9-external.svg",
         "every second pulse at input 0 exposes a picture"},
        {"Port 1 synchronized to port 0",
         {"1:FG_TRIGGERSTATE=TS_SYNC_STOP", "0:FG_AREATRIGGERMODE=ATM_GENERATOR",
          "0:FG_TRIGGER_FRAMESPERSECOND=50", "1:FG_TRIGGER_PULSEFORMGEN0_DELAY=2000",
          "1:FG_AREATRIGGERMODE=ATM_SYNCHRONIZED", "1:FG_TRIGGERSTATE=TS_ACTIVE"},
         {0, 1},
         "120ms",
         {},
         {},
         "10-synchronized.svg",
         "camera 1 exposing 2 ms after camera 0, both from the generator of port 0"},
    };
    return steps;
}

} // namespace orbctl

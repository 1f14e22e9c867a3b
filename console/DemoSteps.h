#pragma once

#include <string>
#include <vector>

namespace orbctl {

/// One step of the demonstration with pictures: what is set, what is acquired on both ports, what can be seen.
struct PictureStep {
    const char* title;
    std::vector<std::string> settings; ///< for both ports, or for the port in front of a colon
    unsigned count;                    ///< pictures of each port
    const char* word;                  ///< begins the files' names
    const char* remark;
};

/// One step with a timing diagram.
struct DiagramStep {
    const char* title;
    std::vector<std::string> settings;
    std::vector<unsigned> ports; ///< drawn
    const char* time;
    std::vector<std::string> timedSettings; ///< while the time passes, on the ports that are drawn
    std::vector<std::string> pulses;        ///< on input pins
    const char* file;                       ///< without its folder
    const char* remark;
};

const std::vector<PictureStep>& pictureSteps();
const std::vector<DiagramStep>& diagramSteps();

/// The scene for a board in software: cameras that wait for their triggers.
extern const char* const demoScene;

} // namespace orbctl

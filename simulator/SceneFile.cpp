#include "simulator/SceneFile.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <locale>
#include <map>
#include <mutex>
#include <set>
#include <sstream>
#include <stdexcept>

namespace simulator {
namespace {

constexpr double ticksPerMicrosecond = 62.5;
constexpr double longestMicroseconds = 1e12;

/// The words of a line, one after another; whatever does not fit ends the reading.
class Words {
  public:
    explicit Words(const std::string& line) : mInput(line) {}

    std::string word(const char* what) {
        std::string text;
        if (!(mInput >> text)) {
            throw std::runtime_error(std::string("the line ends before ") + what);
        }
        return text;
    }

    /// The rest of the line, for names that hold spaces.
    std::string rest(const char* what) {
        std::string text;
        std::getline(mInput >> std::ws, text);
        return text.empty() ? word(what) : text;
    }

    std::uint32_t number(const char* what) {
        const double value = real(what, UINT32_MAX);
        if (value != std::floor(value)) {
            throw std::runtime_error(std::string(what) + " is a whole number");
        }
        return static_cast<std::uint32_t>(value);
    }

    std::uint64_t ticks(const char* what) {
        return static_cast<std::uint64_t>(
            std::llround(real(what, longestMicroseconds) * ticksPerMicrosecond));
    }

    double real(const char* what, double highest) {
        std::istringstream text(word(what));
        text.imbue(std::locale::classic());
        double value = 0;
        if (!(text >> value) || !text.eof() || !(value >= 0 && value <= highest)) {
            throw std::runtime_error(std::string(what) + " is no number, or out of range");
        }
        return value;
    }

    bool choice(const char* what, const char* yes, const char* no) {
        const std::string text = word(what);
        if (text != yes && text != no) {
            throw std::runtime_error(std::string(what) + " is " + yes + " or " + no);
        }
        return text == yes;
    }

    void end() {
        std::string text;
        if (mInput >> text) {
            throw std::runtime_error("too many words: " + text);
        }
    }

  private:
    std::istringstream mInput;
};

PixelFormat pixelFormat(const std::string& name) {
    static const std::map<std::string, PixelFormat> formats = {{"mono8", PixelFormat::mono8},
                                                               {"mono8signed", PixelFormat::mono8Signed},
                                                               {"mono10", PixelFormat::mono10},
                                                               {"mono12", PixelFormat::mono12},
                                                               {"mono16", PixelFormat::mono16}};
    const auto found = formats.find(name);
    if (found == formats.end()) {
        throw std::runtime_error("a format is mono8, mono8signed, mono10, mono12 or mono16");
    }
    return found->second;
}

std::uint64_t freeRunningTicks(double framesPerSecond) {
    const auto ticksPerSecond = static_cast<double>(BoardClock::ticksPerSecond);
    return framesPerSecond > 0 ? static_cast<std::uint64_t>(std::max(1.0, ticksPerSecond / framesPerSecond))
                               : 0;
}

using CameraReader = void (*)(Words&, CameraSetup&);

const std::map<std::string, CameraReader>& cameraReaders() {
    static const std::map<std::string, CameraReader> readers = {
        {"sensor",
         [](Words& words, CameraSetup& camera) {
             camera.sensorWidth = words.number("the sensor's width");
             camera.sensorHeight = words.number("the sensor's height");
         }},
        {"format",
         [](Words& words, CameraSetup& camera) { camera.pixelFormat = pixelFormat(words.word("a format")); }},
        {"packet",
         [](Words& words, CameraSetup& camera) { camera.packetBytes = words.number("the packet size"); }},
        {"cables",
         [](Words& words, CameraSetup& camera) {
             camera.cablesCrossed = words.choice("what the cables are", "crossed", "straight");
         }},
        {"exposure",
         [](Words& words, CameraSetup& camera) { camera.exposureTicks = words.ticks("the exposure"); }},
        {"readout",
         [](Words& words, CameraSetup& camera) { camera.readoutTicks = words.ticks("the readout"); }},
        {"rate",
         [](Words& words, CameraSetup& camera) {
             camera.freeRunningTicks = freeRunningTicks(words.real("the rate", 1e6));
         }},
        {"power", [](Words& words,
                     CameraSetup& camera) { camera.connected = words.choice("the power", "on", "off"); }},
        {"pictures",
         [](Words& words, CameraSetup& camera) { camera.pictureFolder = words.rest("the folder"); }},
    };
    return readers;
}

void readCamera(Words& words, Board& board) {
    const std::uint32_t port = words.number("the port");
    CameraSetup camera = board.camera(port);
    const std::string property = words.word("what to set");
    const auto reader = cameraReaders().find(property);
    if (reader == cameraReaders().end()) {
        throw std::runtime_error("a camera has no " + property);
    }
    reader->second(words, camera);
    words.end();
    board.setCamera(port, camera);
}

void readInput(Words& words, Board& board) {
    const std::uint32_t input = words.number("the input");
    const std::string what = words.word("high, low or pulses");
    if (what == "pulses") {
        InputWave wave{};
        wave.firstRise = words.ticks("the first edge");
        wave.highTicks = words.ticks("the high time");
        wave.lowTicks = words.ticks("the low time");
        wave.count = words.number("the number of pulses");
        words.end();
        board.playInput(input, wave);
    } else if (what == "high" || what == "low") {
        words.end();
        board.driveInput(input, what == "high");
    } else {
        throw std::runtime_error("an input is high, low or gets pulses");
    }
}

void readLine(const std::string& line, Board& board) {
    Words words(line.substr(0, line.find('#')));
    std::string first;
    if (!(std::istringstream(line) >> first) || first.front() == '#') {
        return;
    }
    words.word("anything");
    if (first == "camera") {
        readCamera(words, board);
    } else if (first == "input") {
        readInput(words, board);
    } else {
        throw std::runtime_error("a line begins with camera or input");
    }
}

} // namespace

void setScene(Board& board, const std::string& file) {
    std::ifstream input(file);
    if (!input) {
        throw std::runtime_error(file + ": cannot be read");
    }
    std::string line;
    for (unsigned number = 1; std::getline(input, line); ++number) {
        try {
            readLine(line, board);
        } catch (const std::exception& mistake) {
            throw std::runtime_error(file + ", line " + std::to_string(number) + ": " + mistake.what());
        }
    }
}

void setSceneFromEnvironment(Board& board) {
    static std::mutex lock;
    static std::set<unsigned> boardsDone;
    const char* file = std::getenv("ORBELLINE_BOARD_SCENE");
    const std::lock_guard<std::mutex> guard(lock);
    if (file != nullptr && boardsDone.insert(board.number()).second) {
        setScene(board, file);
    }
}

} // namespace simulator

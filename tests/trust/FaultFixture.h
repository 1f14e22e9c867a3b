#pragma once

#include "tests/support/TemporaryFolder.h"
#include "tests/trust/AppletView.h"
#include "tests/trust/ParameterAccess.h"

#include <optional>

/// A fresh applet in a scene, without a record of calls.
class FaultSubject {
  public:
    /// \param ports  where the scene is entered
    explicit FaultSubject(const Scene& scene = {"Fresh", {}}, const std::vector<int>& ports = {0, 1});

    AppletOnBoard applet;
    [[nodiscard]] AppletView::Picture look() { return mView.look(); }
    [[nodiscard]] AppletView& view() { return mView; }

  private:
    AppletOnBoard& prepared(const Scene& scene, const std::vector<int>& ports);

    AppletView mView;
};

/// What sweeps over an applet in use have in common: files to save to and to load from.
class FaultFixture : public testing::Test {
  protected:
    /// Leaves allocated what the process keeps once it has used an applet.
    FaultFixture();

    /// Settings far from the defaults; a table of the user's.
    [[nodiscard]] Scene changed() const;
    int save(FaultSubject& subject) { return Fg_saveConfig(subject.applet.handle(), file.c_str()); }
    int load(FaultSubject& subject) { return Fg_loadConfig(subject.applet.handle(), file.c_str()); }

    /// Frees an applet and brings a fresh one to the settings that its getters told.
    /// \return where the hardware is another then, in words; empty for nowhere
    [[nodiscard]] std::string differencesFromTwin(std::optional<FaultSubject>& subject);

    /// Open files of this process.
    [[nodiscard]] static std::size_t openFiles();

    kavo::test::TemporaryFolder folder;
    std::string file = folder.path("settings.mcf");
    /// Too long a name for a string to hold without memory.
    std::string tableFile =
        folder.makeFile("a table that a user made.lut", "id=3;\nnrOfElements=2;\n[gray]\n0,17;\n1,18;\n");
};

#pragma once

#include "effects/window/EffectWindow.h"
#include "help/ReadmeTopics.h"

#include <memory>
#include <vector>

namespace quillbay {

namespace Ui {
class frmReadme;
}

class LibraryHost;

/// The help: a list of topics and the text of the chosen one.
class frmReadme : public EffectWindow {
    Q_OBJECT

public:
    frmReadme(LibraryHost& main, QAction* menuItem);
    ~frmReadme() override;

protected:
    /// Chooses the first topic.
    void Form_Load() override;

private:
    void lstChoices_Click();
    void lblEmail_Click();

    LibraryHost& main_;
    std::unique_ptr<Ui::frmReadme> ui_;
    const std::vector<ReadmeTopic> topics_; ///< in the order of the list
};

} // namespace quillbay

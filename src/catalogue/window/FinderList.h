#pragma once

#include <QListWidget>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quillbay {

/// The files that the finder lists, each with a check box. Several can be selected; Space checks or unchecks
/// them all, as the current one is not yet.
class FinderList : public QListWidget {
    Q_OBJECT

public:
    explicit FinderList(QWidget* parent = nullptr);

    /// Adds a row for each path from that one on, without signals.
    void AddRows(const std::vector<std::string>& paths, std::size_t from, Qt::CheckState state);
    /// Changes many rows as one: without signals and repaints in between. The top row stays.
    void ChangeRows(const std::function<void()>& change);
    /// Turns all check marks round, without signals.
    void Invert();
    bool HasCheckedRow() const;
    /// The paths of the rows in their order.
    std::vector<std::string> Paths(bool onlyChecked) const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace quillbay

#include "app/MainWindowController.h"
#include "app/PastSessionsWindow.h"
#include "core/SessionRecorder.h"
#include "support/FakeSessionStore.h"
#include "support/Session.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTreeView>

#include <gtest/gtest.h>

using namespace tensio;

namespace {

// Two stored sessions, the second of them of 花子; neither saved.
struct Clinic {
    Session session;
    FakeSessionStore store;
    std::optional<SessionRecorder> recorder;

    Clinic()
    {
        for (std::string const name : {"太郎", "花子"}) {
            auto const id = store.begin({{}, name, 30.0f, 1.0f, false});
            store.write(*id, {1, 20.0f, 30.0f, {}, true, 0, {}});
        }
        recorder.emplace(session.manager, store, session.runLoop, session.clock);
    }
};

template<typename T = QPushButton>
T& find(QWidget const& window, QString const& name)
{
    return *window.findChild<T*>(name);
}

} // namespace

TEST(PastSessions, ALineOffersTheUnsavedOneUntilItIsOpened)
{
    Clinic clinic;
    QMenu printMenu;
    MainWindowController controller(
        clinic.session.manager, clinic.session.runLoop, clinic.session.alerts, printMenu);
    auto& window = controller.window();
    controller.showNotices(*clinic.recorder, clinic.store);
    window.show();
    auto const& line = find<QWidget>(window, QStringLiteral("unsavedSessionView"));
    EXPECT_TRUE(line.isVisible());
    EXPECT_TRUE(
        find<QLabel>(window, QStringLiteral("unsavedDetailLabel")).text().contains(u"花子"));
    find(window, QStringLiteral("openUnsavedButton")).click();
    EXPECT_EQ(clinic.session.manager.username.value(), "花子");
    EXPECT_TRUE(find(window, QStringLiteral("saveButton")).isEnabled());
    EXPECT_FALSE(line.isVisible());
    EXPECT_FALSE(clinic.store.unsavedSession());
    auto const& problem = find<QWidget>(window, QStringLiteral("storeProblemView"));
    EXPECT_FALSE(problem.isVisible());
    clinic.recorder->problem.setValue(StoreProblem::NoSpace);
    EXPECT_TRUE(problem.isVisible());
}

TEST(PastSessions, TheListSearchesByNameAndAsksBeforeItDeletes)
{
    Clinic clinic;
    QWidget parent;
    PastSessionsWindow window(*clinic.recorder, clinic.store, parent);
    auto const& rows = *find<QTreeView>(window, QStringLiteral("sessionList")).model();
    EXPECT_EQ(rows.rowCount(), 2);
    find<QLineEdit>(window, QStringLiteral("searchInput")).setText(QStringLiteral("太"));
    EXPECT_EQ(rows.rowCount(), 1);
    for (bool const isSure : {false, true}) {
        find(window, QStringLiteral("removeButton")).click();
        auto& question = find<QMessageBox>(window, {});
        EXPECT_EQ(question.defaultButton()->text(), QStringLiteral("キャンセル"));
        question.buttons().at(isSure ? 0 : 1)->click();
        delete &question;
        EXPECT_EQ(clinic.store.stored.size(), isSure ? 1U : 2U);
    }
    EXPECT_EQ(clinic.store.stored.begin()->second.summary.name, "花子");
}

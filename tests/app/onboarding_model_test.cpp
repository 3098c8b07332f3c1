#include "app/models/onboarding_model.h"

#include "tests/support/temporary_disk.h"

#include <QSettings>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class OnboardingModelTest : public testing::Test {
protected:
    OnboardingModelTest() { QSettings().clear(); }
    ~OnboardingModelTest() override { QSettings().clear(); }

    TemporaryDisk m_disk;
};

} // namespace

TEST_F(OnboardingModelTest, IsOverOnlyWhenThatIsStored) {
    const std::pair<QVariant, bool> cases[]{{{}, false},         {true, true},
                                            {u"true"_s, true},   {false, false},
                                            {u"false"_s, false}, {QStringList{u"true"_s, u"x"_s}, false}};
    for (const auto& [stored, didOnboard] : cases) {
        QSettings().clear();
        if (stored.isValid())
            QSettings().setValue(u"didOnboard"_s, stored);
        EXPECT_EQ(OnboardingModel(m_disk.disk()).didOnboard(), didOnboard) << stored.toString().toStdString();
        EXPECT_EQ(QSettings().contains(u"didOnboard"_s), stored.isValid());
    }
}

TEST_F(OnboardingModelTest, IsFinishedOnceAndForGood) {
    OnboardingModel model(m_disk.disk());
    QList<QVariant> storedWhenTold;
    QObject::connect(&model, &OnboardingModel::didOnboardChanged, &model,
                     [&] { storedWhenTold.append(QSettings().value(u"didOnboard"_s)); });
    model.finish();
    model.finish();
    EXPECT_EQ(storedWhenTold, QList<QVariant>{true});
    EXPECT_TRUE(OnboardingModel(m_disk.disk()).didOnboard());
}

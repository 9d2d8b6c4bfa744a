#include "TestTree.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

std::string runTimeMessage(const std::function<void()>& f) {
    try {
        f();
    } catch (const ErrorRunTime& e) {
        return e.message();
    }
    return "no error";
}

} // namespace

TEST(TagPaths, EveryFormReachesItsItem) {
    std::unique_ptr<Plant> plant(newPlant());
    Stage& cond = dynamic_cast<Stage&>(plant->at("COND"));
    Stage& tphase = dynamic_cast<Stage&>(plant->at("S01:Tphase"));
    EXPECT_EQ(&plant->Q("T"), &plant->T);
    EXPECT_EQ(&plant->Q("COND.P"), &cond.P);
    EXPECT_EQ(&plant->Q("S01:Tphase.ndot"), &tphase.ndot);
    EXPECT_EQ(&plant->Q("x[2]"), &plant->x[2]);
    EXPECT_EQ(&plant->Q("COND.x[1]"), &cond.x[1]);
    EXPECT_EQ(&plant->Q("S01:Tphase.x[0]"), &tphase.x[0]);
    // A[1][2] and A[1,2] are the same element; an item tagged "A[1][1]" is found before the matrix.
    EXPECT_EQ(&plant->Q("A[1][2]"), &plant->K(1, 2));
    EXPECT_EQ(&plant->Q("A[1,2]"), &plant->K(1, 2));
    EXPECT_EQ(&plant->Q("A[1][1]"), &plant->scalarA11);
    // "S01[2].T" is the child tagged literally S01[2]; "S01.x[2]" an element in the child S01.
    EXPECT_EQ(&plant->Q("S01[2].T"), &dynamic_cast<Stage&>(plant->at("S01[2]")).T);
    EXPECT_EQ(&plant->Q("S01.x[2]"), &dynamic_cast<Stage&>(plant->at("S01")).x[2]);
    EXPECT_EQ(&plant->I("COND.n"), &cond.n.value());
    EXPECT_EQ(&plant->I("stages[1]"), &plant->stages[1]);
    EXPECT_EQ(&plant->S("S01:Tphase.name"), &tphase.name.value());
    EXPECT_EQ(&plant->S("labels[0]"), &plant->labels[0]);
    EXPECT_EQ(plant->S("COND.labels[1]"), "l");
}

TEST(TagPaths, AComponentNameOutsideAModelGivesZero) {
    std::unique_ptr<Plant> plant(newPlant());
    Value& z = plant->Q("x[CO2]");
    EXPECT_EQ(z.toDouble(), 0.0);
    z = 5.0; // whatever a caller writes there does not come back
    EXPECT_EQ(plant->Q("x[N2]").toDouble(), 0.0);
    EXPECT_EQ(plant->Q("x[N2]").unitText(), "");
    EXPECT_EQ(plant->Q("A[1,CO2]").toDouble(), 0.0);
}

TEST(TagPaths, BadPathsAreRefusedWithTheirTexts) {
    std::unique_ptr<Plant> plant(newPlant());
    EXPECT_EQ(runTimeMessage([&] { plant->Q("x[1"); }),
              "Error was thrown by function: Object::Q\nGeneric Run-Time error: incorrect square bracket syntax: "
              "missing closing bracket\n");
    EXPECT_EQ(runTimeMessage([&] { plant->Q("x]1["); }),
              "Error was thrown by function: Object::Q\nGeneric Run-Time error: incorrect square bracket syntax: wrong "
              "bracket order\n");
    EXPECT_EQ(runTimeMessage([&] { plant->Q("nosuchtag"); }),
              "Error was thrown by function: Object::element\nGeneric Run-Time error: non-existant tag nosuchtag\n");
    EXPECT_EQ(runTimeMessage([&] { plant->Q("NOPE.T"); }),
              "Error was thrown by function: Node::child\nGeneric Run-Time error: non-existant tag NOPE\n");
    EXPECT_EQ(runTimeMessage([&] { plant->Q("x[7]"); }),
              "Error was thrown by function: TypeVector::at\nGeneric Run-Time error: index is outside range: index "
              "larger than vector size\n");
    EXPECT_NE(runTimeMessage([&] { plant->I("nosuch"); }).find("Object::I"), std::string::npos);
    EXPECT_NE(runTimeMessage([&] { plant->S("nosuch"); }).find("Object::S"), std::string::npos);
}

TEST(ObjectTree, AtRefusesANodeWithoutItems) {
    registerTestTree();
    if (!NodeFactory::registered("BareNode"))
        NodeFactory::registerType<Node>("BareNode", "No items", "option", false, {}, {}, {}, "", 1, 1);
    std::unique_ptr<Plant> plant(newPlant());
    plant->addChild("BareNode", {"bare", ""});
    EXPECT_EQ(runTimeMessage([&] { plant->at("bare"); }),
              "Error was thrown by function: Object::at\nGeneric Run-Time error: Node is not an Object\n");
    EXPECT_EQ(runTimeMessage([&] { plant->addChild("Stage", {"COND", ""}); }),
              "Error was thrown by function: Node::addChild(type, defaults)\nGeneric Run-Time error: duplicate tag: COND\n");
}

TEST(Numbering, SubtreesAreContiguousBlocks) {
    std::unique_ptr<Plant> plant(newPlant());
    // Depth first in order of creation: plant 0, COND 1, S01 2, Tphase 3, S01[2] 4.
    EXPECT_EQ(plant->id(), 0u);
    EXPECT_EQ(plant->range(), 5u);
    EXPECT_EQ(plant->at("COND").id(), 1u);
    EXPECT_EQ(plant->at("COND").range(), 1u);
    EXPECT_EQ(plant->at("S01").id(), 2u);
    EXPECT_EQ(plant->at("S01").range(), 2u);
    EXPECT_EQ(plant->at("S01:Tphase").id(), 3u);
    EXPECT_EQ(plant->at("S01[2]").id(), 4u);
    EXPECT_EQ(&plant->search(3), &plant->at("S01:Tphase"));
    EXPECT_TRUE(plant->at("S01").contains(3));
    EXPECT_FALSE(plant->at("S01").contains(4));
    EXPECT_EQ(runTimeMessage([&] { plant->search(9); }),
              "Error was thrown by function: Node::search\nGeneric Run-Time error: id not found\n");
}

TEST(Numbering, AChildAddedLaterShiftsTheSubtreesBehindIt) {
    std::unique_ptr<Plant> plant(newPlant());
    Node& cond = plant->at("COND");
    Node& s01 = plant->at("S01");
    Node& tphase = plant->at("S01:Tphase");
    Node& last = plant->at("S01[2]");
    Node& added = cond.addChild("Stage", {"C", "Added under COND"});
    EXPECT_EQ(cond.id(), 1u);
    EXPECT_EQ(added.id(), 2u); // right behind COND's old subtree
    EXPECT_EQ(cond.range(), 2u);
    EXPECT_EQ(s01.id(), 3u);
    EXPECT_EQ(tphase.id(), 4u);
    EXPECT_EQ(last.id(), 5u);
    EXPECT_EQ(plant->range(), 6u);
    // Every subtree is still one block.
    for (const auto& [tag, child] : plant->children())
        for (uint32_t id = child->id(); id < child->id() + child->range(); ++id)
            EXPECT_TRUE(child->contains(id)) << tag;
}

TEST(ObjectTree, PruneAndRename) {
    std::unique_ptr<Plant> plant(newPlant());
    plant->renameChild("COND", "CD");
    EXPECT_TRUE(plant->hasChild("CD"));
    EXPECT_FALSE(plant->hasChild("COND"));
    EXPECT_EQ(plant->at("CD").tag(), "CD");
    plant->renameChild("nothing", "x"); // an unknown tag does nothing
    std::unique_ptr<Node> cut = plant->prune("CD");
    EXPECT_EQ(cut->tag(), "CD");
    EXPECT_EQ(runTimeMessage([&] { plant->prune("CD"); }),
              "Error was thrown by function: Node::prune\nGeneric Run-Time error: error removing child\n");
}

TEST(ObjectTree, FullTagsFollowTheTree) {
    std::unique_ptr<Plant> plant(newPlant());
    Stage& tphase = dynamic_cast<Stage&>(plant->at("S01:Tphase"));
    EXPECT_EQ(plant->fullTag(), "plant");
    EXPECT_EQ(tphase.fullTag(), "plant:S01:Tphase");
    EXPECT_EQ(tphase.T.fullTag(), "plant:S01:Tphase:T");
}

TEST(ObjectTree, PushAndPopRestoreTheWholeSubtree) {
    std::unique_ptr<Plant> plant(newPlant());
    plant->push();
    plant->T = Value(400.0, "K");
    plant->Q("S01:Tphase.P") = Value(5.0, "bar");
    plant->pop();
    EXPECT_EQ(plant->T.toDouble(), 300.0);
    EXPECT_EQ(plant->Q("S01:Tphase.P").toDouble("bar"), 1.0);
}

TEST(ObjectTree, EqualityComparesValuesAndStructure) {
    std::unique_ptr<Plant> a(newPlant()), b(newPlant());
    EXPECT_TRUE(a->equals(*b));
    b->Q("S01:Tphase.T") = Value(301.0, "K");
    EXPECT_FALSE(a->equals(*b));
    *a = *b; // copies the values where the trees agree
    EXPECT_TRUE(a->equals(*b));
    a->at("COND").addChild("Stage", {"extra", ""});
    EXPECT_FALSE(a->equals(*b));
}

// A stage with quantities whose tags sort before, between and after those of every stage.
class WiderStage : public Stage {
public:
    WiderStage() : Stage(Tarvo::Persistency::Defaults("wide", ""), 0, nullptr, nullptr, nullptr) {
        for (Quantity* q : {&first, &between, &last}) addVariable(*q);
    }
    Quantity first{"A0", "", "K", this, 1.0};
    Quantity between{"Q", "", "K", this, 2.0};
    Quantity last{"z", "", "K", this, 3.0};
};

// Assignment copies the items that both objects hold, whichever holds more, and leaves the others alone.
TEST(ObjectTree, AssignmentCopiesTheItemsBothHold) {
    std::unique_ptr<Plant> plant(newPlant());
    WiderStage wide;
    wide.T = Value(410.0, "K");
    wide.n = 12;
    wide.first = Value(5.0, "K");
    static_cast<Node&>(*plant) = wide;
    EXPECT_EQ(plant->T.toDouble(), 410.0);
    EXPECT_EQ(plant->n.value(), 12);
    plant->P = Value(3.0, "bar");
    plant->ndot = Value(7.0, "kmol/h");
    static_cast<Node&>(wide) = *plant;
    EXPECT_EQ(wide.P.toDouble("bar"), 3.0);
    EXPECT_EQ(wide.ndot.toDouble("kmol/h"), 7.0);
    EXPECT_EQ(wide.first.toDouble(), 5.0);
    EXPECT_EQ(wide.between.toDouble(), 2.0);
    EXPECT_EQ(wide.last.toDouble(), 3.0);
}

TEST(ObjectTree, CloneCopiesValues) {
    std::unique_ptr<Plant> plant(newPlant());
    plant->Q("COND.T") = Value(350.0, "K");
    std::unique_ptr<Node> copy(plant->clone());
    EXPECT_TRUE(copy->equals(*plant));
    EXPECT_NE(dynamic_cast<Plant&>(*copy).uuid(), plant->uuid());
}

TEST(RetrieveParameters, DefaultsBoundsAndFallbacks) {
    const Tarvo::Persistency::Defaults d =
        Tarvo::Persistency::Defaults("t", "").setInteger("nStages", 3).setInteger("zero", 0).setString("kind", "rtsc");
    EXPECT_EQ(Object::retrieveInteger(d, 0, nullptr, "nStages", 0, 10, 1), 3);
    EXPECT_EQ(Object::retrieveInteger(d, 0, nullptr, "absent", 0, 10, 2), 2);
    EXPECT_EQ(runTimeMessage([&] { Object::retrieveInteger(d, 0, nullptr, "zero", 0, 10, 1); }),
              "Error was thrown by function: Object::retrieveInteger\nGeneric Run-Time error: Integer parameter zero "
              "= 0 must be stricly greater than 0\n");
    EXPECT_EQ(Object::retrieveInteger(d, 0, nullptr, "zero", -1, 10, 1), 0);
    EXPECT_NE(runTimeMessage([&] { Object::retrieveInteger(d, 0, nullptr, "nStages", 0, 3, 1); })
                  .find("Integer parameter nStages = 3 must be stricly smaller than 3"),
              std::string::npos);
    EXPECT_EQ(Object::retrieveString(d, 0, nullptr, "kind", "x"), "rtsc");
    EXPECT_EQ(Object::retrieveString(d, 0, nullptr, "absent", "x"), "x");
}

TEST(ObjectTree, DefaultsPrintForm) {
    std::ostringstream out;
    out << Tarvo::Persistency::Defaults("t", "").setInteger("g", 1).setString("a", "b").setString("c", "d");
    EXPECT_EQ(out.str(), "[ si [[ g, 1] ] ss [[ a, b] [ c, d] ]]");
}

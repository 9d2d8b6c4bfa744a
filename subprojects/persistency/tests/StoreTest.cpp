#include "SilentServer.h"
#include "TemporaryDatabase.h"
#include "TestTree.h"

#include <tarvo/persistency/Configuration.h>
#include <tarvo/persistency/PersistencyPostgres.h>
#include <tarvo/persistency/PersistencySqlite.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

using Tarvo::Persistency::Defaults;

namespace {

// A plant whose items hold values unlike their defaults, with flags raised here and there.
std::unique_ptr<Plant> filledPlant() {
    std::unique_ptr<Plant> plant(newPlant());
    plant->T = Value(412.5, "K");
    plant->T.setInput();
    plant->P.setOutput();
    plant->x[1] = Value(0.3);
    for (std::size_t i = 0; i < plant->x.size(); ++i) plant->x[i].setInput(); // a vector's flags are its first's
    plant->K(1, 2) = Value(-7.25);
    plant->n = 9;
    plant->stages[0] = -3;
    plant->name = "renamed";
    plant->labels[1] = "second";
    plant->Q("S01:Tphase.ndot") = Value(1.0 / 3.0, "kmol/s");
    plant->S("COND.name") = "condenser";
    return plant;
}

std::unique_ptr<Node> retrieve(Persistency& store, int id) {
    registerTestTree();
    return std::unique_ptr<Node>(NodeFactory::create("Plant", Defaults(), id, &store, nullptr, nullptr));
}

class Store : public ::testing::Test {
protected:
    // Case `id` read by a driver of its own, which hands what it read to the next driver, as a command's does.
    void readElsewhere(int id) {
        PersistencyPostgres reader(database_.connection());
        retrieve(reader, id);
    }

    TemporaryDatabase database_;
    PersistencyPostgres store_{database_.connection()};
};

std::string temporaryFile() {
    char name[] = "/tmp/tarvo-store-XXXXXX";
    close(mkstemp(name));
    return name;
}

} // namespace

TEST_F(Store, BlocksAreAllocatedAtTheEndAndReusedAfterRemoval) {
    EXPECT_EQ(store_.getId(), 0);
    std::unique_ptr<Plant> first(newPlant()), second(newPlant());
    EXPECT_EQ(first->insert(&store_), 0);
    EXPECT_EQ(store_.getId(), 5);
    EXPECT_EQ(store_.countRows("N", -1), 5);
    std::vector<std::pair<int, std::string>> children;
    store_.retrieveChildren(0, children);
    ASSERT_EQ(children.size(), 3u);
    std::string uuid, tag, description, type;
    int parent = -1, root = -1;
    double created = 0, updated = 0;
    store_.retrieveObject(children[1].first, uuid, tag, description, type, parent, root, created, updated);
    EXPECT_EQ(root, 0);
    EXPECT_EQ(parent, 0);
    EXPECT_EQ(type, "Section");
    EXPECT_EQ(uuid, first->at("S01").uuid());
    EXPECT_NEAR(created, first->at("S01").createdAt(), 1.0);

    EXPECT_EQ(second->insert(&store_), 5);
    EXPECT_EQ(second->at("COND").offset(), -5);
    store_.removeObject(5);
    EXPECT_EQ(store_.getId(), 5);
    EXPECT_EQ(store_.countCID(5, "Q"), 0);
    EXPECT_EQ(store_.countCID(0, "Q"), 4);
    store_.removeObject(99); // unknown: nothing happens
    EXPECT_EQ(store_.countRows("N", -1), 5);
}

TEST_F(Store, RoundTripGivesAnEqualTree) {
    std::unique_ptr<Plant> plant = filledPlant();
    const int id = plant->insert(&store_);
    std::unique_ptr<Node> back = retrieve(store_, id);
    EXPECT_TRUE(back->equals(*plant));
    auto& copy = dynamic_cast<Plant&>(*back);
    EXPECT_TRUE(copy.T.input());
    EXPECT_TRUE(copy.P.output());
    EXPECT_FALSE(copy.T.output());
    for (std::size_t i = 0; i < copy.x.size(); ++i) EXPECT_TRUE(copy.x[i].input() && !copy.x[i].output()) << i;
    EXPECT_EQ(copy.Q("S01:Tphase.ndot").toDouble(), 1.0 / 3.0); // every digit comes back
    EXPECT_EQ(copy.Q("S01:Tphase.ndot").unitText(), "kmol s^-1");
    EXPECT_EQ(copy.at("S01:Tphase").id(), 3u);
    EXPECT_TRUE(copy.retrieved());
}

// Only what changed is written: a row of an unchanged value keeps the version that the insert made.
TEST_F(Store, UpdateRewritesValuesAndResizedVectors) {
    std::unique_ptr<Plant> plant = filledPlant();
    const int id = plant->insert(&store_);
    const int labelRows = store_.countRows("SVV", -1);
    const auto version = [&](const std::string& tag) {
        return database_.column("SELECT xmin FROM Q WHERE NID = " + std::to_string(id) + " AND TAG = '" + tag + "'");
    };
    const std::vector<std::string> unchanged = version("P"), changed = version("T");
    ASSERT_EQ(unchanged.size(), 1u);
    plant->T = Value(500.0, "K");
    plant->labels.resize(5); // another size: written anew
    plant->labels[4] = "fifth";
    plant->x[2] = Value(0.6); // the same size: rewritten in place
    plant->Q("COND.P") = Value(3.0, "bar");
    EXPECT_EQ(plant->update(&store_), id);
    EXPECT_EQ(store_.countRows("SVV", -1), labelRows + 3);
    EXPECT_EQ(version("P"), unchanged);
    EXPECT_NE(version("T"), changed);
    std::unique_ptr<Node> back = retrieve(store_, id);
    EXPECT_TRUE(back->equals(*plant));
    EXPECT_EQ(dynamic_cast<Plant&>(*back).labels.size(), 5u);
}

// The store keeps what it read of a tree only until the next write: each update below reads rows that
// the one before has rewritten, in transactions of their own and in one around them all.
TEST_F(Store, SuccessiveUpdatesOfOneTreeReadBackWhatWasWritten) {
    std::unique_ptr<Plant> plant = filledPlant();
    const int id = plant->insert(&store_);
    for (const bool oneTransaction : {false, true}) {
        if (oneTransaction) store_.push_transaction();
        for (std::size_t size : {5u, 2u, 2u, 0u, 4u}) {
            plant->labels.resize(size);
            if (size > 0) plant->labels[size - 1] = "last of " + std::to_string(size);
            plant->x[0] = Value(0.1 * static_cast<double>(size));
            plant->update(&store_);
            // A read here would send what the transaction has gathered, which the other round must not.
            if (!oneTransaction) {
                EXPECT_TRUE(retrieve(store_, id)->equals(*plant)) << size << " labels";
            }
        }
        if (oneTransaction) store_.pop_transaction();
        std::unique_ptr<Node> back = retrieve(store_, id);
        EXPECT_TRUE(back->equals(*plant)) << (oneTransaction ? "in one transaction" : "one by one");
    }
}

// A command reads a case with one driver and writes its results with the next, which takes the rows of vectors
// and items that the first read instead of reading them again, as long as no write has come between; it then
// sends only the items whose values differ from those rows.
TEST_F(Store, AnUpdateTakesTheVectorsThatTheLastDriverReadWhileNoWriteCameBetween) {
    std::unique_ptr<Plant> plant = filledPlant();
    const int id = plant->insert(&store_);
    // As another kernel would: what a process hands between its drivers never reaches this one.
    const auto writeElsewhere = [&](const std::function<void(Plant&)>& change) {
        PersistencyPostgres writer(database_.connection() + " application_name=other");
        std::unique_ptr<Node> theirs = retrieve(writer, id);
        change(dynamic_cast<Plant&>(*theirs));
        theirs->update(&writer);
    };
    const auto update = [&](double kelvin) {
        plant->T = Value(kelvin, "K");
        const long before = store_.statements();
        plant->update(&store_);
        return store_.statements() - before;
    };

    readElsewhere(id);
    const long taken = update(420.0);
    EXPECT_TRUE(retrieve(store_, id)->equals(*plant));
    readElsewhere(id);
    writeElsewhere([](Plant& theirs) { theirs.P = Value(2.0, "bar"); });
    const long readAgain = update(430.0);
    EXPECT_EQ(readAgain - taken, 6) << "the four tables of vectors, and the unchanged items of I and S";
    EXPECT_TRUE(retrieve(store_, id)->equals(*plant));

    // Of two updates of a number within one transaction the last holds, also where it sets back the stored value.
    readElsewhere(id);
    const double stored = plant->T.toDouble();
    store_.push_transaction();
    update(stored + 10.0);
    update(stored);
    store_.pop_transaction();
    EXPECT_EQ(dynamic_cast<Plant&>(*retrieve(store_, id)).T.toDouble(), stored);

    // Another kernel gives x a fourth element, in rows with new IDs: the rows read before it name none of them.
    readElsewhere(id);
    writeElsewhere([](Plant& theirs) { theirs.x.resize(4); });
    plant->x[0] = Value(0.05);
    update(440.0);
    std::unique_ptr<Node> back = retrieve(store_, id);
    EXPECT_TRUE(back->equals(*plant));
    EXPECT_EQ(dynamic_cast<Plant&>(*back).x.size(), plant->x.size());
}

// An update that goes by the rows that another driver read sends what differs from them as the server compares:
// a NaN for a number and a number for a NaN, text that differs only in its trailing blanks; and nothing where
// every value stands as read.
TEST_F(Store, AnUpdateByTheRowsReadSendsWhatDiffersAsTheServerComparesIt) {
    std::unique_ptr<Plant> plant = filledPlant();
    const int id = plant->insert(&store_);
    const auto update = [&] {
        readElsewhere(id);
        const long before = store_.statements();
        plant->update(&store_);
        return store_.statements() - before;
    };
    const long vectorsAndNodes = update();
    plant->T = Value(std::nan(""), "K");
    plant->name = "first  ";
    plant->n = 5;
    EXPECT_EQ(update(), vectorsAndNodes + 3); // Q, S and I
    auto back = [&] { return std::unique_ptr<Plant>(dynamic_cast<Plant*>(retrieve(store_, id).release())); };
    EXPECT_TRUE(std::isnan(back()->T.toDouble()));
    EXPECT_EQ(back()->name.value(), "first");
    EXPECT_EQ(back()->n.value(), 5);
    EXPECT_EQ(update(), vectorsAndNodes + 1) << "the trailing blanks, again";
    plant->name = "first";
    EXPECT_EQ(update(), vectorsAndNodes) << "NaN meets NaN";
    plant->T = Value(310.0, "K");
    EXPECT_EQ(update(), vectorsAndNodes + 1);
    EXPECT_EQ(back()->T.toDouble(), 310.0);
}

// A tree is read with one query for its nodes and one per table, however many nodes it has.
TEST_F(Store, RetrievalReadsEachTableOnce) {
    std::unique_ptr<Plant> plant = filledPlant();
    const int id = plant->insert(&store_);
    const long before = store_.statements();
    std::unique_ptr<Node> back = retrieve(store_, id);
    EXPECT_TRUE(back->equals(*plant));
    EXPECT_EQ(store_.statements() - before, 8); // N, I, Q, S and the four tables of vectors

    // A node of the tree read on its own comes from the block of that node.
    std::string uuid, tag, description, type;
    int parent = -1, root = -1;
    double created = 0, updated = 0;
    const int section = static_cast<int>(plant->at("S01").id());
    PersistencyPostgres other(database_.connection());
    other.retrieveObject(section, uuid, tag, description, type, parent, root, created, updated);
    EXPECT_EQ(tag, "S01");
    EXPECT_EQ(parent, id);
    std::vector<std::pair<int, std::string>> children;
    other.retrieveChildren(section, children);
    ASSERT_EQ(children.size(), 1u);
    EXPECT_EQ(children[0].second, plant->at("S01:Tphase").type());
}

// The tables of a block go out together: one that fails fails the read with the server's reason, and the
// connection serves the next statement.
TEST_F(Store, AFailedReadOfTheTablesLeavesTheConnectionUsable) {
    std::unique_ptr<Plant> plant = filledPlant();
    const int id = plant->insert(&store_);
    database_.execute("ALTER TABLE QV RENAME TO QV_AWAY");
    PersistencyPostgres reader(database_.connection());
    try {
        retrieve(reader, id);
        FAIL() << "no error";
    } catch (const ErrorPostgres& e) {
        EXPECT_NE(e.message().find("qv"), std::string::npos) << e.message();
    }
    database_.execute("ALTER TABLE QV_AWAY RENAME TO QV");
    EXPECT_EQ(reader.countRows("N", -1), 5);
    EXPECT_TRUE(retrieve(reader, id)->equals(*plant));
}

TEST_F(Store, VectorOfTheSameSizeKeepsItsRowIdentifiers) {
    std::unique_ptr<Plant> plant = filledPlant();
    plant->insert(&store_);
    database_.execute("CREATE TABLE qvv_before AS SELECT ID, VID FROM QVV");
    plant->x[0] = Value(0.9);
    plant->update(&store_);
    database_.execute("CREATE TABLE changed AS SELECT a.ID FROM QVV a LEFT JOIN qvv_before b ON a.ID = b.ID WHERE b.ID IS NULL");
    EXPECT_EQ(store_.countRows("changed", -1), 0);
}

TEST_F(Store, MatrixValuesAreStoredByColumns) {
    std::unique_ptr<Plant> plant(newPlant());
    for (int r = 0; r < 2; ++r)
        for (int c = 0; c < 3; ++c) plant->K(r, c) = Value(10.0 * r + c);
    plant->insert(&store_);
    database_.execute("CREATE TABLE order_check AS SELECT QMV.VALUE FROM QMV JOIN QM ON QMV.MID = QM.ID "
                      "WHERE QM.NID = 0 ORDER BY QMV.ID");
    // Row ID order 0, 10, 1, 11, 2, 12: column after column.
    database_.execute("DO $$ BEGIN IF (SELECT string_agg(VALUE::text, ',') FROM order_check) <> '0,10,1,11,2,12' "
                      "THEN RAISE EXCEPTION 'wrong order'; END IF; END $$");
}

// NaN and the infinities read back as themselves, after an insert and after an update, in scalars and in
// vectors; only a subnormal becomes the smallest normal number.
TEST_F(Store, UndefinedNumbersReadBackAsThemselves) {
    const double inf = std::numeric_limits<double>::infinity();
    std::unique_ptr<Plant> plant(newPlant());
    plant->T = Value(inf, "K");
    plant->P = Value(-inf, "Pa");
    plant->ndot = Value(1e-310, "kmol/s");
    plant->x[0] = Value(std::nan(""));
    const int id = plant->insert(&store_);
    std::unique_ptr<Node> first = retrieve(store_, id);
    const auto& back = dynamic_cast<Plant&>(*first);
    EXPECT_EQ(back.T.toDouble(), inf);
    EXPECT_EQ(back.P.toDouble(), -inf);
    EXPECT_EQ(back.ndot.toDouble(), 4.450147717014403e-308);
    EXPECT_TRUE(std::isnan(back.x[0].toDouble()));
    plant->T = Value(std::nan(""), "K");
    plant->x[0] = Value(-inf);
    plant->update(&store_);
    std::unique_ptr<Node> second = retrieve(store_, id);
    const auto& updated = dynamic_cast<Plant&>(*second);
    EXPECT_TRUE(std::isnan(updated.T.toDouble()));
    EXPECT_EQ(updated.x[0].toDouble(), -inf);
}

// Numbers whose text needs every one of seventeen digits, or an exponent at either end of the range, come back bit
// for bit, whether inserted or written by an update.
TEST_F(Store, EveryFiniteNumberReadsBackBitForBit) {
    const double hard[] = {0.1 + 0.2, 1.0 / 3.0, std::numeric_limits<double>::max(),
                           std::numeric_limits<double>::min(), 123456789012345678.0, -0.0};
    std::unique_ptr<Plant> plant(newPlant());
    const auto fill = [&](int shift) {
        plant->T = Value(hard[shift % 6], "K");
        plant->ndot = Value(hard[(shift + 1) % 6], "kmol/s");
        for (std::size_t i = 0; i < plant->x.size(); ++i) plant->x[i] = Value(hard[(shift + 2 + i) % 6]);
    };
    const auto expectSame = [&](int shift) {
        std::unique_ptr<Node> node = retrieve(store_, 0);
        const auto& back = dynamic_cast<Plant&>(*node);
        std::vector<double> expected{hard[shift % 6], hard[(shift + 1) % 6]};
        std::vector<double> got{back.T.toDouble(), back.ndot.toDouble()};
        for (std::size_t i = 0; i < back.x.size(); ++i) {
            expected.push_back(hard[(shift + 2 + i) % 6]);
            got.push_back(back.x[i].toDouble());
        }
        for (std::size_t i = 0; i < got.size(); ++i)
            EXPECT_EQ(std::memcmp(&got[i], &expected[i], sizeof(double)), 0) << got[i] << " for " << expected[i];
    };
    fill(0);
    ASSERT_EQ(plant->insert(&store_), 0);
    expectSame(0);
    fill(3);
    plant->update(&store_);
    expectSame(3);
}

// Texts go to the server as elements of array literals: quotes, backslashes, commas, braces, inner blanks and the
// word NULL stay theirs, whether inserted or written by an update.
TEST_F(Store, TextsComeBackWithEveryCharacterTheyHold) {
    const std::string hard[] = {"a \"quoted\", {braced} back\\slash", "\\\"", "NULL", ""};
    std::unique_ptr<Plant> plant(newPlant());
    plant->name = hard[0];
    plant->labels[0] = hard[1];
    plant->labels[1] = hard[2];
    const int id = plant->insert(&store_);
    std::unique_ptr<Node> first = retrieve(store_, id);
    EXPECT_EQ(dynamic_cast<Plant&>(*first).name.value(), hard[0]);
    EXPECT_EQ(dynamic_cast<Plant&>(*first).labels[0], hard[1]);
    EXPECT_EQ(dynamic_cast<Plant&>(*first).labels[1], hard[2]);
    plant->name = hard[1];
    plant->labels[0] = hard[3];
    plant->labels[1] = hard[0];
    plant->update(&store_);
    std::unique_ptr<Node> second = retrieve(store_, id);
    EXPECT_EQ(dynamic_cast<Plant&>(*second).name.value(), hard[1]);
    EXPECT_EQ(dynamic_cast<Plant&>(*second).labels[0], hard[3]);
    EXPECT_EQ(dynamic_cast<Plant&>(*second).labels[1], hard[0]);
    // Blanks at the ends: a string item loses them all, an element of a string vector only its trailing ones.
    plant->name = "  two ends  ";
    plant->labels[0] = "  two ends  ";
    plant->update(&store_);
    std::unique_ptr<Node> third = retrieve(store_, id);
    EXPECT_EQ(dynamic_cast<Plant&>(*third).name.value(), "two ends");
    EXPECT_EQ(dynamic_cast<Plant&>(*third).labels[0], "  two ends");
}

// A row gone from the store fails the whole update, which names its tag and writes nothing of the tree.
TEST_F(Store, UpdateOfMissingRowsNamesTheTagAndChangesNothing) {
    std::unique_ptr<Plant> plant(newPlant());
    const int id = plant->insert(&store_);
    const int section = static_cast<int>(plant->at("S01").id()) - plant->at("S01").offset();
    database_.execute("DELETE FROM Q WHERE NID = " + std::to_string(section) + " AND TAG = 'T'");
    plant->n = 12;
    plant->Q("COND.P") = Value(2.5, "bar");
    plant->Q("S01:Tphase.T") = Value(350.0, "K");
    try {
        plant->update(&store_);
        FAIL() << "no error";
    } catch (const ErrorPostgres& e) {
        EXPECT_NE(e.message().find("Postgres database driver Error: Record T not found!"), std::string::npos)
            << e.message();
        EXPECT_NE(e.message().find("Called from function: Node::update"), std::string::npos);
    }
    std::unique_ptr<Node> back = retrieve(store_, id);
    auto& stored = dynamic_cast<Plant&>(*back);
    EXPECT_EQ(stored.n.value(), 4);
    EXPECT_EQ(stored.Q("COND.P").toDouble(), 1e5);
    EXPECT_EQ(stored.Q("S01:Tphase.T").toDouble(), 300.0);
}

// Rows go to the store one statement per table, not one per item: a tree of five nodes with items of every
// kind, each vector element a row, takes as many statements as a tree of one node would.
TEST_F(Store, InsertAndUpdateSendAStatementPerTable) {
    std::unique_ptr<Plant> plant = filledPlant();
    long before = store_.statements();
    plant->insert(&store_);
    // BEGIN, the allocation lock and getId, N, the three scalar and four vector tables, their values, COMMIT
    EXPECT_LE(store_.statements() - before, 17);
    plant->T = Value(450.0, "K");
    plant->Q("S01:Tphase.P") = Value(2.0, "bar");
    before = store_.statements();
    plant->update(&store_);
    // BEGIN, N and the four vector tables read once, N stamped, the three scalar tables and four of values, COMMIT
    EXPECT_LE(store_.statements() - before, 15);
    std::unique_ptr<Node> back = retrieve(store_, static_cast<int>(plant->id()) - plant->offset());
    auto& stored = dynamic_cast<Plant&>(*back);
    EXPECT_EQ(stored.T.toDouble(), 450.0);
    EXPECT_EQ(stored.Q("S01:Tphase.P").toDouble(), 2e5);
    EXPECT_EQ(stored.labels[1], "second");
}

TEST_F(Store, AnInsertThatFailsHalfWayLeavesNothingBehind) {
    std::unique_ptr<Plant> plant(newPlant());
    // A string longer than its column stops the insert at the third node.
    plant->S("S01.name") = std::string(300, 'x');
    EXPECT_THROW(plant->insert(&store_), ErrorPostgres);
    for (const char* table : {"N", "I", "IV", "IVV", "Q", "QV", "QVV", "QM", "QMV", "S", "SV", "SVV"})
        EXPECT_EQ(store_.countRows(table, -1), 0) << table;
    plant->S("S01.name") = "short";
    try {
        EXPECT_EQ(plant->insert(&store_), 0); // the same connection goes on
    } catch (const Error& e) {
        ADD_FAILURE() << e.message();
    }
}

TEST_F(Store, PurgeOfAnEmptyStoreSucceeds) {
    store_.purgeAll();
    std::unique_ptr<Plant>(newPlant())->insert(&store_);
    store_.purgeAll();
    EXPECT_EQ(store_.countRows("N", -1), 0);
    EXPECT_EQ(store_.getId(), 0);
}

TEST_F(Store, ConcurrentKernelsGetDisjointBlocks) {
    constexpr int kernels = 8, treesEach = 4;
    std::vector<pid_t> children;
    for (int k = 0; k < kernels; ++k) {
        const pid_t pid = fork();
        if (pid == 0) {
            int status = 0;
            try {
                PersistencyPostgres own(database_.connection());
                for (int t = 0; t < treesEach; ++t) std::unique_ptr<Plant>(filledPlant())->insert(&own);
            } catch (const Error& e) {
                std::fputs(e.message().c_str(), stderr);
                status = 1;
            }
            _exit(status);
        }
        children.push_back(pid);
    }
    for (pid_t pid : children) {
        int status = -1;
        waitpid(pid, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    }
    const int trees = kernels * treesEach;
    EXPECT_EQ(store_.countRows("N", -1), trees * 5);
    EXPECT_EQ(store_.getId(), trees * 5);
    EXPECT_EQ(store_.countRows("Q", -1), trees * 5 * 4);
    // Every block is whole: each root's subtree holds exactly its own rows.
    for (int root = 0; root < trees * 5; root += 5) EXPECT_EQ(store_.countCID(root + 4, "Q"), 4) << root;
}

// Two kernels that resize the same vector at once: the second waits until the first commits and then
// deletes the values that the first wrote, so the vector holds the second's values alone.
TEST_F(Store, VectorsResizedByTwoKernelsAtOnceHoldTheLastOnesValues) {
    std::unique_ptr<Plant> plant = filledPlant();
    const int id = plant->insert(&store_);
    store_.push_transaction();
    plant->labels.resize(3);
    plant->update(&store_);
    store_.countRows("N", -1); // a read sends what the transaction has gathered: the vector is locked now
    const pid_t pid = fork();
    if (pid == 0) {
        int status = 1;
        try {
            PersistencyPostgres own(database_.connection());
            std::unique_ptr<Node> other = retrieve(own, id); // read before the first commits
            dynamic_cast<Plant&>(*other).labels.resize(6);
            other->update(&own);
            status = 0;
        } catch (const Error& e) {
            std::fputs(e.message().c_str(), stderr);
        }
        _exit(status);
    }
    // The first commits only once the second waits for its lock.
    const std::string waiting = "SELECT count(*) FROM pg_stat_activity WHERE datname = '" + database_.name() +
                                "' AND wait_event_type = 'Lock'";
    for (int i = 0; i < 1000 && database_.column(waiting).at(0) == "0"; ++i) usleep(10000);
    EXPECT_EQ(database_.column(waiting).at(0), "1");
    store_.pop_transaction();
    int status = -1;
    waitpid(pid, &status, 0);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(dynamic_cast<Plant&>(*retrieve(store_, id)).labels.size(), 6u);
}

TEST(StoreConnection, WrongPasswordAndClosedPortAreReported) {
    const std::string server = PersistencyPostgres::connectionString(Configuration(Configuration::kernelFile));
    try {
        // Over loopback, where the password is asked for (on the socket the system user signs in); a given
        // password comes before the file's.
        PersistencyPostgres store(server + " host=127.0.0.1 password=wrong");
        FAIL();
    } catch (const ErrorPostgres& e) {
        EXPECT_NE(e.message().find("Postgres database driver Error: "), std::string::npos);
        EXPECT_NE(e.message().find("password authentication failed"), std::string::npos) << e.message();
    }
    try {
        PersistencyPostgres store("dbname=persistency user=tarvo host=127.0.0.1 port=1");
        FAIL();
    } catch (const ErrorPostgres& e) {
        EXPECT_NE(e.message().find("Connection refused"), std::string::npos) << e.message();
    }
}

TEST(Configuration, SettingsOfTheSection) {
    const std::string file = temporaryFile();
    std::ofstream(file) << "DatabaseHost=elsewhere\n[1.0]\n[1.1]\nDatabaseHost = db.local\nDatabasePort= 5433\n"
                           "Greeting=a\\nb\nDatabaseHostname=x\n";
    const Configuration c(file);
    EXPECT_TRUE(c.readable());
    EXPECT_EQ(c.setting("DatabaseHost"), std::optional<std::string>(" db.local"));
    EXPECT_EQ(c.setting("DatabasePort"), std::optional<std::string>(" 5433")); // a leading blank is kept
    EXPECT_EQ(c.setting("Greeting"), std::optional<std::string>("a\nb"));
    EXPECT_EQ(c.setting("Missing"), std::nullopt);
    const std::string waits = " connect_timeout=10 options='-c lock_timeout=10s -c statement_timeout=60s'";
    EXPECT_EQ(PersistencyPostgres::connectionString(c),
              "dbname=persistency user=tarvo" + waits + " host= db.local port= 5433");
    std::ofstream(file) << "[1.1]\n";
    EXPECT_EQ(PersistencyPostgres::connectionString(Configuration(file)), "dbname=persistency user=tarvo" + waits);
    std::ofstream(file) << "[1.1]\nDatabasePasswordFile=/etc/my store's pass\n";
    EXPECT_EQ(PersistencyPostgres::connectionString(Configuration(file)),
              "dbname=persistency user=tarvo" + waits + " passfile='/etc/my store\\'s pass'");
    std::ofstream(file) << "[1.1]\nDatabaseConnectTimeout=2\nDatabaseLockTimeout=1\nDatabaseStatementTimeout=5\n";
    EXPECT_EQ(PersistencyPostgres::connectionString(Configuration(file)),
              "dbname=persistency user=tarvo connect_timeout=2 options='-c lock_timeout=1s -c "
              "statement_timeout=5s'");
    for (const char* bad : {"0", "-1", "2 dbname=other", "x"}) {
        std::ofstream(file) << "[1.1]\nDatabaseLockTimeout=" << bad << "\n";
        EXPECT_THROW(PersistencyPostgres::connectionString(Configuration(file)), ErrorPostgres) << bad;
    }
    std::filesystem::remove(file);
}

// -200 in id.txt and as the exit status, of which the system keeps the low eight bits.
TEST(ConfigurationDeathTest, AMissingFileEndsTheProcessWithMinus200) {
    const auto folder = std::filesystem::temp_directory_path() / ("tarvo-config-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    const auto here = std::filesystem::current_path();
    std::filesystem::current_path(folder);
    EXPECT_EXIT(Configuration::openOrQuit("/nonexistent/TARVO.conf"), ::testing::ExitedWithCode(256 - 200),
                "Can not open configuration file: \\[/nonexistent/TARVO.conf\\]");
    std::filesystem::current_path(here);
    std::ifstream id(folder / "id.txt");
    std::string text;
    std::getline(id, text);
    EXPECT_EQ(text, "-200");
    std::filesystem::remove_all(folder);
}

TEST(SqliteStore, RoundTripIntoAFreshFile) {
    const std::string file = temporaryFile();
    std::unique_ptr<Plant> plant = filledPlant();
    {
        PersistencySqlite store(file);
        store.initialize();
        EXPECT_EQ(plant->insert(&store), 0);
        EXPECT_EQ(store.countRows("N", -1), 5);
        std::unique_ptr<Node> back = retrieve(store, 0);
        EXPECT_TRUE(back->equals(*plant));
        plant->labels.resize(1);
        plant->T = Value(250.0, "K");
        plant->update(&store);
        EXPECT_TRUE(retrieve(store, 0)->equals(*plant));
        // The export keeps undefined numbers: NaN as the text "NaN", the infinities as SQLite's own.
        plant->T = Value(std::nan(""), "K");
        plant->P = Value(-std::numeric_limits<double>::infinity(), "Pa");
        plant->update(&store);
        std::unique_ptr<Node> undefined = retrieve(store, 0);
        EXPECT_TRUE(std::isnan(dynamic_cast<Plant&>(*undefined).T.toDouble()));
        EXPECT_EQ(dynamic_cast<Plant&>(*undefined).P.toDouble(), -std::numeric_limits<double>::infinity());
        store.removeObject(0);
        EXPECT_EQ(store.countRows("N", -1), 0);
        EXPECT_EQ(store.countRows("QVV", -1), 0);
    }
    std::filesystem::remove(file);
}

TEST(SqliteStore, RefusesAFileThatDoesNotExist) {
    try {
        PersistencySqlite store("/nonexistent/case.db");
        FAIL();
    } catch (const ErrorSqlite& e) {
        EXPECT_NE(e.message().find("Sqlite database driver Error: can't open db file /nonexistent/case.db"),
                  std::string::npos);
    }
}

TEST(SqliteStore, LocksRefuseBadArgumentsAtOnce) {
    const std::string file = temporaryFile();
    PersistencySqlite store(file);
    std::string who = "NULL";
    EXPECT_EQ(store.check_lock(1, who), 0);
    who = "me";
    EXPECT_EQ(store.try_lock(1, who, 3600), 0);
    EXPECT_EQ(store.try_lock(-1, who, 10), 0);
    std::filesystem::remove(file);
}

// A server that accepts the connection and never answers ends the connection after its timeout.
TEST(StoreConnection, AServerThatNeverAnswersTimesOut) {
    SilentServer server;
    try {
        PersistencyPostgres store("dbname=persistency user=tarvo password=x connect_timeout=2 host=127.0.0.1 port=" +
                                  std::to_string(server.port()));
        ADD_FAILURE() << "connected to a silent listener";
    } catch (const ErrorPostgres& e) {
        EXPECT_NE(e.message().find("timeout expired"), std::string::npos) << e.message();
    }
}

// A kernel stopped while it holds the allocation lock makes the others' allocations fail after the lock
// timeout, while an update of another case, resized vectors and all, goes on without waiting.
TEST_F(Store, AHeldAllocationLockEndsOthersAfterTheLockTimeout) {
    std::unique_ptr<Plant> plant = filledPlant();
    const int id = plant->insert(&store_);
    PersistencyPostgres holder(database_.connection());
    holder.push_transaction();
    holder.getId(); // takes the lock until the end of this transaction
    PersistencyPostgres waiting(database_.connection() + " options='-c lock_timeout=1s'");
    plant->labels.resize(4);
    plant->labels[3] = "fourth";
    EXPECT_EQ(plant->update(&waiting), id);
    EXPECT_TRUE(retrieve(store_, id)->equals(*plant));
    waiting.push_transaction();
    try {
        waiting.getId();
        ADD_FAILURE() << "allocated while another kernel holds the lock";
    } catch (const ErrorPostgres& e) {
        EXPECT_NE(e.message().find("lock timeout"), std::string::npos) << e.message();
    }
    holder.pop_transaction();
}

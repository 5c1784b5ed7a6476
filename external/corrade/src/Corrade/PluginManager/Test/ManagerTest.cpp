#include <filesystem>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <dlfcn.h>

#include <Corrade/Containers/StringStl.h>
#include <Corrade/PluginManager/Manager.hpp>
#include <Corrade/PluginManager/PluginMetadata.h>
#include <Corrade/Utility/Debug.h>

#include "../../Test/TemporaryFolder.h"
#include "../../Test/expectAssertion.h"
#include "AbstractAnimal.h"

namespace {

using namespace Corrade;
using namespace Containers::Literals;
using PluginManager::LoadState;
using Test::TemporaryFolder;
using Utility::Debug;
using Utility::Error;
using Utility::Warning;
typedef PluginManager::Manager<AbstractAnimal> Manager;
typedef std::vector<std::string> Strings;

const std::string Animals = PLUGINS "/animals";
const std::string Broken = PLUGINS "/broken";

template<class T> Strings toStrings(const T& list) {
    Strings out;
    for(const auto& i: list)
        out.push_back(i);
    return out;
}

bool isMapped(const std::string& path) {
    void* const handle = dlopen(path.data(), RTLD_NOW | RTLD_NOLOAD);
    if(handle)
        dlclose(handle);
    return handle;
}

/* What a plugin printed and what a manager complained about */
class ManagerTest: public testing::Test {
protected:
    ManagerTest(): _redirectDebug{&_debug}, _redirectError{&_error} {}

    std::string debug() { return take(_debug); }
    std::string error() { return take(_error); }

private:
    static std::string take(std::ostringstream& out) {
        const std::string text = out.str();
        out.str({});
        return text;
    }

    std::ostringstream _debug, _error;
    Debug _redirectDebug;
    Error _redirectError;
};

TEST_F(ManagerTest, DefaultsOfThePluginInterface) {
    using PluginManager::AbstractPlugin;
    EXPECT_TRUE(AbstractPlugin::pluginInterface() == "");
    EXPECT_EQ(AbstractPlugin::pluginSearchPaths().size(), 0u);
    EXPECT_TRUE(AbstractPlugin::pluginSuffix() == ".so");
    EXPECT_TRUE(AbstractPlugin::pluginMetadataSuffix() == ".conf");
    EXPECT_EQ(PluginManager::AbstractManager::Version, 7);
    EXPECT_EQ(CORRADE_PLUGIN_VERSION, 7);
    static_assert(!std::is_copy_constructible<Manager>::value, "");
    static_assert(!std::is_move_constructible<Manager>::value, "");

    struct Plugin: AbstractPlugin {
    } plugin;
    EXPECT_FALSE(plugin.canBeDeleted());
    EXPECT_TRUE(plugin.plugin() == "");
    EXPECT_EQ(plugin.metadata(), nullptr);
}

TEST_F(ManagerTest, ListsAreSorted) {
    Manager manager{Animals};
    EXPECT_TRUE(manager.pluginInterface() == "corrade.test.AbstractAnimal/1.0");
    EXPECT_TRUE(manager.pluginDirectory() == Animals);
    EXPECT_EQ(toStrings(manager.pluginList()), (Strings{"Beagle", "Cat", "Dog", "Puppy"}));
    EXPECT_EQ(toStrings(manager.aliasList()),
        (Strings{"Beagle", "Cat", "Dog", "Feline", "Pet", "Puppy"}));
    EXPECT_EQ(error(), "");
}

TEST_F(ManagerTest, MissingFolderIsAnEmptyOne) {
    Manager manager{Animals + "/nowhere"};
    EXPECT_EQ(manager.pluginList().size(), 0u);
    EXPECT_EQ(error(), "");
}

TEST_F(ManagerTest, FoldersAndOtherFilesAreNotListed) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("Folder.so"));
    folder.write("Other.txt", "");
    folder.write("Plugin.so", "");
    folder.write("Plugin.conf", "");
    const Manager manager{folder.path()};
    EXPECT_EQ(toStrings(manager.pluginList()), (Strings{"Plugin"}));
}

TEST_F(ManagerTest, LoadsInstantiatesAndUnloads) {
    Manager manager{Animals};
    EXPECT_EQ(manager.loadState("Dog"), LoadState::NotLoaded);
    EXPECT_EQ(manager.load("Dog"), LoadState::Loaded);
    EXPECT_EQ(manager.loadState("Dog"), LoadState::Loaded);
    EXPECT_EQ(manager.load("Dog"), LoadState::Loaded);
    EXPECT_EQ(debug(), "Dog initialized\n");
    {
        Containers::Pointer<AbstractAnimal> dog = manager.instantiate("Dog");
        ASSERT_TRUE(dog);
        EXPECT_STREQ(dog->name(), "Dog");
        EXPECT_TRUE(dog->plugin() == "Dog");
        EXPECT_EQ(dog->metadata(), manager.metadata("Dog"));
    }
    EXPECT_EQ(debug(), "Dog 1 deleted\n");
    EXPECT_EQ(manager.unload("Dog"), LoadState::NotLoaded);
    EXPECT_EQ(debug(), "Dog finalized\n");
    EXPECT_EQ(manager.unload("Dog"), LoadState::NotLoaded);
    EXPECT_FALSE(isMapped(Animals + "/Dog.so"));
    EXPECT_EQ(error(), "");
}

TEST_F(ManagerTest, AliasStandsForItsPlugin) {
    Manager manager{Animals};
    {
        Containers::Pointer<AbstractAnimal> pet = manager.loadAndInstantiate("Pet");
        ASSERT_TRUE(pet);
        EXPECT_STREQ(pet->name(), "Cat");
        EXPECT_TRUE(pet->plugin() == "Pet");
        EXPECT_TRUE(pet->metadata()->name() == "Cat");
    }
    EXPECT_EQ(manager.loadState("Feline"), LoadState::Loaded);
    EXPECT_EQ(manager.loadState("Cat"), LoadState::Loaded);
    EXPECT_EQ(manager.metadata("Pet"), manager.metadata("Cat"));
    EXPECT_EQ(manager.unload("Feline"), LoadState::NotLoaded);
}

TEST_F(ManagerTest, UnknownPluginIsNotFound) {
    Manager manager{Animals};
    EXPECT_EQ(manager.loadState("Nothing"), LoadState::NotFound);
    EXPECT_EQ(manager.load("Nothing"), LoadState::NotFound);
    EXPECT_EQ(error(),
        "PluginManager::Manager::load(): plugin Nothing is not static and was not found in " +
            Animals + "\n");
    EXPECT_EQ(manager.unload("Nothing"), LoadState::NotFound);
    EXPECT_EQ(error(), "PluginManager::Manager::unload(): plugin Nothing was not found\n");
    EXPECT_FALSE(manager.loadAndInstantiate("Nothing"));
}

TEST_F(ManagerTest, BrokenModulesAreNotLoaded) {
    Manager manager{Broken};
    const struct {
        const char* name;
        LoadState state;
        const char* message;
    } cases[]{
        {"NotAModule", LoadState::LoadFailed, "cannot load plugin NotAModule from \""},
        {"NoVersion", LoadState::LoadFailed, "cannot get version of plugin NoVersion: "},
        {"NoInterface", LoadState::LoadFailed,
            "cannot get interface string of plugin NoInterface: "},
        {"NoInitializer", LoadState::LoadFailed,
            "cannot get initializer of plugin NoInitializer: "},
        {"NoFinalizer", LoadState::LoadFailed, "cannot get finalizer of plugin NoFinalizer: "},
        {"NoInstancer", LoadState::LoadFailed, "cannot get instancer of plugin NoInstancer: "},
        {"WrongVersion", LoadState::WrongPluginVersion,
            "wrong version of plugin WrongVersion, expected 7 but got 42\n"},
        {"WrongInterface", LoadState::WrongInterfaceVersion,
            "wrong interface string of plugin WrongInterface, expected "
            "corrade.test.AbstractAnimal/1.0 but got corrade.test.AbstractAnimal/0.9\n"},
    };
    for(const auto& i: cases) {
        const std::string path = Broken + "/" + i.name + ".so";
        EXPECT_EQ(manager.load(i.name), i.state) << i.name;
        EXPECT_THAT(error(),
            testing::StartsWith(std::string("PluginManager::Manager::load(): ") + i.message))
            << i.name;
        EXPECT_EQ(manager.loadState(i.name), LoadState::NotLoaded) << i.name;
        EXPECT_FALSE(isMapped(path)) << i.name;
        EXPECT_FALSE(manager.loadAndInstantiate(i.name)) << i.name;
        error();
    }
}

TEST_F(ManagerTest, LoaderMessageIsPassedOn) {
    Manager manager{Broken};
    manager.load("NotAModule");
    const std::string path = Broken + "/NotAModule.so";
    EXPECT_EQ(error(),
        "PluginManager::Manager::load(): cannot load plugin NotAModule from \"" + path +
            "\": " + path + ": file too short\n");
}

TEST_F(ManagerTest, DependencyThatCanNotBeLoadedIsUnresolved) {
    Manager manager{Broken};
    EXPECT_EQ(manager.load("DependsOnNothing"), LoadState::UnresolvedDependency);
    EXPECT_THAT(error(),
        testing::EndsWith("PluginManager::Manager::load(): unresolved dependency Nothing of "
                          "plugin DependsOnNothing\n"));
    EXPECT_EQ(manager.load("DependsOnBroken"), LoadState::UnresolvedDependency);
    EXPECT_EQ(error(),
        "PluginManager::Manager::load(): wrong version of plugin WrongVersion, expected 7 but got "
        "42\n"
        "PluginManager::Manager::load(): unresolved dependency WrongVersion of plugin "
        "DependsOnBroken\n");
    EXPECT_EQ(manager.loadState("DependsOnBroken"), LoadState::NotLoaded);
}

/* No promise of Corrade itself, which may run out of stack here */
TEST_F(ManagerTest, CircleOfDependenciesIsUnresolved) {
    Manager manager{Broken};
    EXPECT_EQ(manager.load("CircleA"), LoadState::UnresolvedDependency);
    EXPECT_EQ(error(),
        "PluginManager::Manager::load(): unresolved dependency CircleA of plugin CircleB\n"
        "PluginManager::Manager::load(): unresolved dependency CircleB of plugin CircleA\n");
}

TEST_F(ManagerTest, DependenciesAreLoadedFirst) {
    Manager manager{Animals};
    EXPECT_EQ(manager.load("Puppy"), LoadState::Loaded);
    EXPECT_EQ(debug(), "Dog initialized\nBeagle initialized\nCat initialized\nPuppy initialized\n");
    EXPECT_EQ(toStrings(manager.metadata("Dog")->usedBy()), (Strings{"Beagle"}));
    EXPECT_EQ(toStrings(manager.metadata("Pet")->usedBy()), (Strings{"Puppy"}));

    EXPECT_EQ(manager.unload("Dog"), LoadState::Required);
    EXPECT_EQ(error(),
        "PluginManager::Manager::unload(): plugin Dog is required by other plugins: {Beagle}\n");
    EXPECT_EQ(manager.unload("Puppy"), LoadState::NotLoaded);
    EXPECT_EQ(manager.metadata("Beagle")->usedBy().size(), 0u);
    EXPECT_EQ(manager.unload("Beagle"), LoadState::NotLoaded);
    EXPECT_EQ(manager.unload("Dog"), LoadState::NotLoaded);
    EXPECT_EQ(error(), "");
}

TEST_F(ManagerTest, UndeletableInstanceKeepsThePlugin) {
    Manager manager{Animals};
    Containers::Pointer<AbstractAnimal> cat = manager.loadAndInstantiate("Cat");
    EXPECT_EQ(manager.unload("Cat"), LoadState::Used);
    EXPECT_THAT(error(),
        testing::AnyOf("PluginManager::Manager::unload(): plugin Cat has a live instance which "
                       "cannot be automatically deleted\n",
            "PluginManager::Manager::unload(): plugin Cat is currently used and cannot be "
            "deleted\n"));
    EXPECT_EQ(manager.loadState("Cat"), LoadState::Loaded);
    EXPECT_EQ(cat->count(), 1);
    cat = nullptr;
    EXPECT_EQ(manager.unload("Cat"), LoadState::NotLoaded);
}

TEST_F(ManagerTest, DeletableInstancesAreDeletedLastFirst) {
    Manager manager{Animals};
    manager.load("Dog");
    manager.instantiate("Dog").release();
    manager.instantiate("Dog").release();
    { manager.instantiate("Dog"); }
    manager.instantiate("Dog").release();
    EXPECT_EQ(debug(), "Dog initialized\nDog 3 deleted\n");
    EXPECT_EQ(manager.unload("Dog"), LoadState::NotLoaded);
    EXPECT_EQ(debug(), "Dog 4 deleted\nDog 2 deleted\nDog 1 deleted\nDog finalized\n");
}

TEST_F(ManagerTest, DestructorUnloadsInOrderOfNames) {
    {
        Manager manager{Animals};
        manager.load("Dog");
        manager.load("Cat");
        manager.instantiate("Dog").release();
        debug();
    }
    EXPECT_EQ(debug(), "Cat finalized\nDog 1 deleted\nDog finalized\n");
    EXPECT_FALSE(isMapped(Animals + "/Dog.so"));
}

TEST_F(ManagerTest, TwoManagersLoadIndependently) {
    Manager a{Animals};
    Manager b{Animals};
    a.load("Dog");
    EXPECT_EQ(b.loadState("Dog"), LoadState::NotLoaded);
    b.load("Dog");
    EXPECT_EQ(debug(), "Dog initialized\nDog initialized\n");
    a.unload("Dog");
    EXPECT_EQ(b.loadState("Dog"), LoadState::Loaded);
    EXPECT_STREQ(b.instantiate("Dog")->name(), "Dog");
    b.unload("Dog");
    EXPECT_EQ(debug(), "Dog finalized\nDog 1 deleted\nDog finalized\n");
}

TEST_F(ManagerTest, AnotherFolderKeepsWhatIsLoaded) {
    Manager manager{Animals};
    manager.load("Cat");
    manager.setPluginDirectory(Animals + "/nowhere");
    EXPECT_EQ(toStrings(manager.pluginList()), (Strings{"Cat"}));
    EXPECT_EQ(toStrings(manager.aliasList()), (Strings{"Cat", "Feline", "Pet"}));
    EXPECT_EQ(manager.loadState("Pet"), LoadState::Loaded);
    manager.setPluginDirectory(Animals);
    EXPECT_EQ(manager.pluginList().size(), 4u);
    EXPECT_EQ(manager.loadState("Cat"), LoadState::Loaded);
}

TEST_F(ManagerTest, ReloadListsAgain) {
    const TemporaryFolder folder;
    Manager manager{folder.path()};
    folder.write("Plugin.so", "");
    folder.write("Plugin.conf", "");
    EXPECT_EQ(manager.pluginList().size(), 0u);
    manager.reloadPluginDirectory();
    EXPECT_EQ(toStrings(manager.pluginList()), (Strings{"Plugin"}));
    std::filesystem::remove(folder.path("Plugin.so"));
    manager.reloadPluginDirectory();
    EXPECT_EQ(manager.loadState("Plugin"), LoadState::NotFound);
}

TEST_F(ManagerTest, FileIsLoadedFromAnyFolder) {
    Manager manager{Animals + "/nowhere"};
    {
        Containers::Pointer<AbstractAnimal> cat = manager.loadAndInstantiate(Animals + "/Cat.so");
        ASSERT_TRUE(cat);
        EXPECT_TRUE(cat->plugin() == "Cat");
    }
    EXPECT_EQ(toStrings(manager.aliasList()), (Strings{"Cat", "Feline", "Pet"}));
    EXPECT_EQ(manager.load(Animals + "/Cat.so"), LoadState::Used);
    EXPECT_EQ(error(),
        "PluginManager::load(): Cat.so conflicts with currently loaded plugin of the same name\n");
    EXPECT_EQ(manager.unload("Pet"), LoadState::NotLoaded);
}

TEST_F(ManagerTest, FileReplacesAKnownPlugin) {
    const TemporaryFolder folder;
    folder.write("Dog.so", "");
    folder.write("Dog.conf", "provides=Stray\n");
    Manager manager{folder.path()};
    EXPECT_EQ(manager.load(Animals + "/Dog.so"), LoadState::Loaded);
    EXPECT_EQ(manager.loadState("Stray"), LoadState::NotFound);
    EXPECT_EQ(manager.loadState("Dog"), LoadState::Loaded);
}

TEST_F(ManagerTest, ReplacedFileIsReadAfterUnload) {
    const TemporaryFolder folder;
    folder.write("Dog.conf", "");
    std::filesystem::copy_file(Animals + "/Dog.so", folder.path("Dog.so"));
    Manager manager{folder.path()};
    EXPECT_STREQ(manager.loadAndInstantiate("Dog")->name(), "Dog");
    EXPECT_EQ(manager.instantiate("Dog")->count(), 2);
    EXPECT_EQ(manager.unload("Dog"), LoadState::NotLoaded);
    EXPECT_FALSE(isMapped(folder.path("Dog.so")));

    std::filesystem::copy_file(PLUGINS "/later/DogLater.so", folder.path("New.so"));
    std::filesystem::rename(folder.path("New.so"), folder.path("Dog.so"));
    Containers::Pointer<AbstractAnimal> dog = manager.loadAndInstantiate("Dog");
    EXPECT_STREQ(dog->name(), "LaterDog");
    EXPECT_EQ(dog->count(), 1);
}

/* Looks for its plugins relative to the test's executable */
struct Found: AbstractAnimal {
    static Containers::Array<Containers::String> pluginSearchPaths() {
        const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe");
        const std::string animals =
            std::filesystem::relative(Animals, executable.parent_path()).string();
        return Containers::array<Containers::String>({"nowhere", animals});
    }
};

TEST_F(ManagerTest, FirstSearchPathThatExistsIsTaken) {
    const PluginManager::Manager<Found> manager;
    EXPECT_TRUE(std::filesystem::equivalent(std::string(manager.pluginDirectory()), Animals));
    EXPECT_EQ(manager.pluginList().size(), 4u);
}

struct Lost: AbstractAnimal {
    static Containers::Array<Containers::String> pluginSearchPaths() {
        return Containers::array<Containers::String>({"nowhere", "/not/there"});
    }
};

TEST_F(ManagerTest, NoSearchPathThatExistsIsAWarning) {
    std::ostringstream out;
    Warning redirect{&out};
    const PluginManager::Manager<Lost> manager;
    EXPECT_EQ(manager.pluginList().size(), 0u);
    const std::string message =
        ": none of the plugin search paths in {nowhere, /not/there} exists and pluginDirectory "
        "was not set, skipping plugin discovery\n";
    EXPECT_THAT(out.str(),
        testing::AnyOf(
            "PluginManager::Manager" + message, "PluginManager::Manager::Manager()" + message));
}

TEST_F(ManagerTest, NoSearchPathAtAllAsserts) {
    EXPECT_EXIT(Manager{}, testing::KilledBySignal(SIGABRT),
        testing::EndsWith(": either pluginDirectory has to be set or T::pluginSearchPaths() is "
                          "expected to have at least one entry\n"));
}

struct Local: AbstractAnimal {
    static Containers::StringView pluginInterface() { return Containers::StringView{"not global"}; }
};

TEST_F(ManagerTest, InterfaceThatIsNotGlobalAsserts) {
    EXPECT_ASSERTION(PluginManager::Manager<Local>{Animals},
        "PluginManager::AbstractPlugin::pluginInterface(): returned view is not global: not "
        "global");
}

TEST_F(ManagerTest, InstantiatingWhatIsNotLoadedAsserts) {
    Manager manager{Animals};
    EXPECT_ASSERTION(manager.instantiate("Pet"),
        "PluginManager::Manager::instantiate(): plugin Pet is not loaded");
    EXPECT_ASSERTION(manager.instantiate("Nothing"),
        "PluginManager::Manager::instantiate(): plugin Nothing is not loaded");
}

/* Made by hand instead of by a module */
struct Tamed: AbstractAnimal {
    using AbstractAnimal::AbstractAnimal;
    const char* name() override { return "Tamed"; }
    int count() override { return 0; }
};

TEST_F(ManagerTest, InstanceByHandNeedsAKnownName) {
    Manager manager{Animals};
    {
        const Tamed tamed{manager, "Feline"};
        EXPECT_TRUE(tamed.plugin() == "Feline");
        EXPECT_TRUE(tamed.metadata()->name() == "Cat");
    }
    EXPECT_ASSERTION((Tamed{manager, "Nothing"}),
        "PluginManager::AbstractPlugin::AbstractPlugin(): attempt to register instance of plugin "
        "not known to given manager");
}

TEST_F(ManagerTest, DestructorWithUndeletableInstanceAsserts) {
    EXPECT_ASSERTION_AT_LAST(
        {
            Manager manager{Animals};
            manager.loadAndInstantiate("Cat").release();
        },
        "PluginManager::Manager: cannot unload plugin Cat on manager destruction: "
        "PluginManager::LoadState::Used");
}

}

// What a screen reader says for the controls that have no text of their own.
#include "ui/accessible_names.h"

#include "tests/equipment/com_object.h"

#include "tests/window/main_window_fixture.h"

#include <windows.h>
#include <objbase.h>
#include <oleacc.h>

#include <map>

namespace {

using testing::IsEmpty;
using testing::Pair;
using testing::UnorderedElementsAre;

constexpr GUID kClass = {0xB5F8350B, 0x0548, 0x48B1, {0xA6, 0xEE, 0x88, 0xBD, 0x00, 0xB4, 0xA5, 0xE7}};
constexpr GUID kInterface = {0x6E26E776, 0x04F0, 0x495D, {0x80, 0xE4, 0x33, 0x30, 0x35, 0x2E, 0x31, 0x69}};
constexpr GUID kName = {0x608D3DF8, 0x8128, 0x4AA7, {0xA4, 0x28, 0xF5, 0x5E, 0x49, 0x26, 0x72, 0x91}};

// The system's annotation service, as the tests have it.
struct Service {
    static inline std::map<int, std::wstring> names;  // by control
    static inline int references = 0;
    static inline HRESULT result = S_OK;

    static void ExpectNameOfControl(DWORD object, DWORD child, const MSAAPROPID& property) {
        EXPECT_EQ(object, static_cast<DWORD>(OBJID_CLIENT));
        EXPECT_EQ(child, static_cast<DWORD>(CHILDID_SELF));
        EXPECT_TRUE(::IsEqualGUID(property, kName));
    }
    static IAccPropServices* Create() {
        static IAccPropServicesVtbl s_methods = {};
        s_methods.SetHwndPropStr = [](IAccPropServices*, HWND window, DWORD object, DWORD child,
                                      MSAAPROPID property, LPCWSTR text) -> HRESULT {
            ExpectNameOfControl(object, child, property);
            if (SUCCEEDED(result)) names[::GetDlgCtrlID(window)] = text;
            return result;
        };
        s_methods.ClearHwndProps = [](IAccPropServices*, HWND window, DWORD object, DWORD child,
                                      const MSAAPROPID* properties, int count) -> HRESULT {
            EXPECT_TRUE(::IsWindow(window));
            EXPECT_EQ(count, 1);
            ExpectNameOfControl(object, child, *properties);
            names.erase(::GetDlgCtrlID(window));
            return result;
        };
        ++references;
        return new ComObject<IAccPropServices>(s_methods, [] { --references; });
    }
};

class AccessibleNamesTest : public MainWindowFixture {
protected:
    AccessibleNamesTest() {
        Service::names.clear();
        Service::references = 0;
        Service::result = S_OK;
    }
    ~AccessibleNamesTest() override {
        Destroy();
        EXPECT_EQ(Service::references, 0);
        EXPECT_THAT(Service::names, IsEmpty()) << "names of windows that are already destroyed";
    }

    // Creates the dialog and selects a file, which shows its path in the status line whatever comes of names.
    void CreateAndSelect() {
        Create();
        Drop({L"C:\\in\\a.pdf"});
        SelectRow(0);
        EXPECT_EQ(Text(IDC_STATUS), L"C:\\in\\a.pdf");
        EXPECT_THAT(calls.Calls(), IsEmpty());
    }

    BOOL reader = TRUE;
    BOOL readerIsKnown = TRUE;
    int created = 0;
    HRESULT creation = S_OK;

private:
    Replaced m_ask =
        REPLACE_IMPORT(SystemParametersInfoW, [this](UINT action, UINT size, PVOID answer, UINT change) {
            EXPECT_EQ(action, static_cast<UINT>(SPI_GETSCREENREADER));
            EXPECT_EQ(size, 0u);
            EXPECT_EQ(change, 0u);
            if (readerIsKnown) *static_cast<BOOL*>(answer) = reader;
            return readerIsKnown;
        });
    Replaced m_create = REPLACE_IMPORT(
        CoCreateInstance,
        [this](REFCLSID classId, LPUNKNOWN outer, DWORD context, REFIID interfaceId, LPVOID* object) {
            ++created;
            EXPECT_TRUE(::IsEqualGUID(classId, kClass));
            EXPECT_TRUE(::IsEqualGUID(interfaceId, kInterface));
            EXPECT_EQ(outer, nullptr);
            EXPECT_EQ(context, static_cast<DWORD>(CLSCTX_INPROC_SERVER));
            *object = FAILED(creation) ? nullptr : Service::Create();
            return creation;
        });
};

TEST_F(AccessibleNamesTest, ControlsWithoutATextAreNamedAfterTheTextBesideThem) {
    Create();
    EXPECT_THAT(Service::names,
                UnorderedElementsAre(Pair(IDC_FILE_LIST, L"Fichiers PDF"), Pair(IDC_PAGES, L"Pages :"),
                                     Pair(IDC_RESOLUTION, L"DPI (-d) : "),
                                     Pair(IDC_EXTRA_OPTIONS, L"Options supplémentaires"),
                                     Pair(IDC_OUTPUT_FOLDER, L"Convertir les DjVu dans ce dossier :"),
                                     Pair(IDC_BROWSE, L"Convertir les DjVu dans ce dossier :"),
                                     Pair(IDC_STATUS, L"Fichiers PDF")));
    EXPECT_EQ(created, 1);
}

TEST_F(AccessibleNamesTest, TheStatusLinesTextIsNotHiddenBehindAName) {
    CreateAndSelect();
    EXPECT_EQ(Service::names.count(IDC_STATUS), 0u);
    Click(IDC_CLEAR);
    ASSERT_EQ(Text(IDC_STATUS), L"");
    EXPECT_EQ(Service::names[IDC_STATUS], L"Fichiers PDF");
    EXPECT_EQ(Service::names.size(), 7u);
}

TEST_F(AccessibleNamesTest, WithoutAReportOfTheSystemNoScreenReaderIsAssumed) {
    readerIsKnown = FALSE;
    Create();
    EXPECT_EQ(created, 0);
}

TEST_F(AccessibleNamesTest, AServiceThatIsMissingOrRefusesLeavesTheWindowWhole) {
    creation = REGDB_E_CLASSNOTREG;
    CreateAndSelect();
    EXPECT_THAT(Service::names, IsEmpty());
    const HWND otherText = ::FindWindowExW(Dialog(), Control(IDC_STATUS), L"Static", nullptr);
    ASSERT_NE(otherText, nullptr);
    EXPECT_EQ(::GetWindowLongPtrW(Control(IDC_STATUS), GWLP_WNDPROC),
              ::GetWindowLongPtrW(otherText, GWLP_WNDPROC))
        << "the status line's messages are still looked at";
    Destroy();
    creation = S_OK;
    Service::result = E_FAIL;
    CreateAndSelect();
}

TEST_F(AccessibleNamesTest, WithoutAScreenReaderAControlOrANameTheServiceIsNotAskedFor) {
    reader = FALSE;
    CreateAndSelect();
    AccessibleNames names;
    EXPECT_FALSE(names.Name(nullptr, L"name"));
    EXPECT_FALSE(names.Name(Control(IDC_PAGES), L""));
    names.NameWhileEmpty(nullptr, L"name");
    names.NameWhileEmpty(Control(IDC_PAGES), L"");
    EXPECT_EQ(created, 0);
}

TEST_F(AccessibleNamesTest, TheServiceIsReleasedWithTheWindow) {
    Create();
    ASSERT_EQ(Service::references, 1);
    ::DestroyWindow(Dialog());
    EXPECT_EQ(Service::references, 0);
}

}  // namespace

// Shows every form in its real window, one after the other.
#pragma once

#include "lookups/frmLookupEd2.h"
#include "lookups/frmLookupImm.h"
#include "qt/QtDesktop.h"
#include "tests/support/Editors.h"
#include "tests/support/ScriptedHost.h"
#include "text/Conversions.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>

namespace health::test {

// Scripted replies behind real windows.
struct ShownForms {
    ShownForms()
    {
        shared.InitObjects(host, false);
        host.patient->patientNumber = 12;
        host.session->reply(L"MEVVAST GETREG", L"12^ACTIVE|A^06/30/2006");
        host.session->reply(L"MEVVELD GET", L"1^^3260310|81^NEEDS HELP\r\n");
        host.session->reply(L"MEVUTL DICLKUP", L"1^^ONE^\r\n2^^TWO^\r\n");
    }

    // Calls `look` with the window of the next form, and closes it.
    void lookAtNext(const std::function<void(QWidget&)>& look)
    {
        // After Form_Activate, which a busy machine delays.
        QTimer::singleShot(30, [this, look] {
            QWidget* const window = QApplication::activeModalWidget();
            if (!window || !window->isActiveWindow())
                return lookAtNext(look);
            QCoreApplication::processEvents();
            look(*window);
            window->close();
        });
    }

    template<typename Editor>
    void show(const std::function<void(QWidget&)>& look, const std::function<void(Editor&)>& prepare = {})
    {
        Editor form(shared);
        if (prepare)
            prepare(form);
        lookAtNext(look);
        desktop.showModal(form);
    }

    template<typename Lookup>
    void lookUp(int table, const std::function<void(QWidget&)>& look)
    {
        lookAtNext(look);
        Lookup(shared).frmLookup::RunQuery(table, L"", false, L"*");
    }

    template<typename... Editors>
    void showEach(const std::function<void(QWidget&)>& look)
    {
        (show<Editors>(look), ...);
    }

    void showAll(const std::function<void(QWidget&)>& look)
    {
        show<frmRepHist>(look);
        host.patient->patientSex = L"M"; // disables the fields
        show<frmRepHist>(look);
        host.patient->patientSex = L"F";
        showEach<frmInf, frmPediatric, frmElder, frmElderView, frmAsthmaReg, frmTxc, frmRefusal, frmER>(look);
        show<frmAsthma>(look, [](frmAsthma& form) { form.setHeight(frmAsthma::RegistryHeight); });
        lookUp<frmLookup>(LookupTableNumber::Provider, look);
        lookUp<frmLookupImm>(LookupTableNumber::Immunization, look);
        lookUp<frmLookupEd2>(LookupTableNumber::EducationTopic, look);
    }

    ScriptedHost host;
    QtDesktop desktop;
    modShared shared { desktop };
};

}

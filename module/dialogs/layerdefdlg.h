// The dialogs that edit layer definitions of a standard: one layer, and the list of all layers of their owner.
#pragma once

#include <functional>
#include <string>

#include "host/platform/form.h"
#include "PipeNodes.h"
#include "standard/standard.h"

// One layer definition. OK writes what was typed into the node; Cancel leaves it as it was.
class CLayerDefDlg : public qrs::platform::Form {
  public:
    // refuseName says why the owner cannot have a layer of that name (one sentence), besides what no layer may be
    // named.
    CLayerDefDlg(LayerNode& layer, std::function<std::wstring(const std::wstring& name)> refuseName);

  protected:
    void describe() override;
    void pressOk() override;

  private:
    void chooseUserLayer();
    void chooseColor();

    LayerNode& layer_;
    std::function<std::wstring(const std::wstring&)> refuseName_;
    qrs::platform::Control* name_ = nullptr;
    qrs::platform::Control* color_ = nullptr;
    qrs::platform::Control* linetype_ = nullptr;
    qrs::platform::Control* weight_ = nullptr;
    qrs::platform::Control* plots_ = nullptr;
    qrs::platform::Control* remark_ = nullptr;
};

// The layers of a pipe system, or of a group of other layers: lists them and edits the one chosen. Changes are made at
// once; the caller gives a copy and drops it when the dialog was cancelled.
class CLayerDefListDlg : public qrs::platform::Form {
  public:
    CLayerDefListDlg(const qrs::standard::Standard& standard, PipeNode& system);
    explicit CLayerDefListDlg(OtherLayerNode& group);

  protected:
    void describe() override;

  private:
    LayerNode* chosenLayer() const;
    void list(std::size_t chosen);
    void edit();
    void add();
    void remove();
    int count() const;
    LayerNode* layerAt(int position) const;
    std::wstring refuseName(const LayerNode* layer, const std::wstring& name) const;

    const qrs::standard::Standard* standard_ = nullptr;
    PipeNode* system_ = nullptr;
    OtherLayerNode* others_ = nullptr;
    qrs::platform::Control* list_ = nullptr;
};

// A dialog of one text field. False when it was cancelled; text is then untouched. refuse says why a text cannot be
// taken.
bool AskText(LPCWSTR title, LPCWSTR caption, std::wstring& text,
             std::function<std::wstring(const std::wstring&)> refuse);

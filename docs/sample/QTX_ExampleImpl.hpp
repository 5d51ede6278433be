// The example in the configuration registry.
// [declare-impl]
#pragma once

#include "QTX_Example.hpp"
#include "Setting.hpp"

/// Getters return 0 or 100, setters 0 or 101; failures are logged.
class QTX_ExampleImpl : public QTX_Example {
  public:
    explicit QTX_ExampleImpl(const std::string& instanceId) : QTX_Example(instanceId) {}

    int getLimit(unsigned short& value, QualifierArray&) const override { return limit_.get(value); }
    int setLimit(unsigned short value) override { return limit_.set(value); }
    int getOwner(std::string& value, QualifierArray&) const override { return owner_.get(value); }
    int setOwner(std::string value) override { return owner_.set(value); }
    int getCount(unsigned int& value, QualifierArray&) const override { return count_.get(value); }
    unsigned int Reset() override;

  private:
    cdroam::Setting<cdroam::Word> limit_{"Limit", {"Example", "LIMIT"}};
    cdroam::Setting<cdroam::Latin1Text> owner_{"Owner", {"Example", "OWNER"}};
    cdroam::Setting<cdroam::Counter> count_{"Count", {"Example", "COUNT"}};
};
// [declare-impl]

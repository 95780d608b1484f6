# The event queue over the sibling messenger, its dialogs and the typed
# database operations.
set(CHILDQUEUE_SOURCES childqueue.cc qdialog.cc tql_operations.cc report_incident.cc
    configuration.cc metering.cc)


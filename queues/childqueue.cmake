# The event queue over the sibling messenger and its dialogs: the database
# over the queue, the parent's configuration.
set(CHILDQUEUE_SOURCES childqueue.cc qdialog.cc
    configuration.cc metering.cc)


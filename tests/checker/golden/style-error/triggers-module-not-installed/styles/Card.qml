import Acme.Controls 1.0

Item {}

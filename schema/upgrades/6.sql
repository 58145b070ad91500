-- From version 5 to 6: the main unit is the first of a product's units.
drop index IX_D1801DW_WL_ID on D1801DW
go
create index IX_D1801DW_WL_ID on D1801DW (WL_ID, T desc)
update SYS_VERSION set VERSION = 6
go
